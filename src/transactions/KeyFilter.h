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
