#pragma once

#include <QObject>

#include <functional>

/// Keeps the characters | ' \ " from being typed into a box whose text goes into statements between apostrophes as it
/// stands. Pasted text is not filtered.
class KeyFilter : public QObject
{
    Q_OBJECT
public:
    using Refusal = std::function<bool(QChar typed)>;
    /// Watches a text box or an editable combo box, for as long as that lives. What `refuses` says yes to cannot be
    /// typed either.
    static void watch(QWidget *box, Refusal refuses = {});

protected:
    bool eventFilter(QObject *box, QEvent *event) override;

private:
    KeyFilter(QWidget *box, Refusal refuses);
    bool isDropped(QChar character) const;

    Refusal m_refuses;
};

namespace MainSubs {

/// The code of a pressed key if it may pass, else 0: `allowed` are the characters that may ("*": all), `disallowed`
/// those that may not in any case; letters of either case count.
int FilterKey(int keyAscii, const QString &allowed, bool allowBackspace, const QString &disallowed);

}
