#pragma once

#include <QObject>

/// Keeps the characters | ' \ " from being typed into a box whose text goes into statements between apostrophes as it
/// stands. Pasted text is not filtered.
class KeyFilter : public QObject
{
    Q_OBJECT
public:
    /// Watches a text box or an editable combo box, for as long as that lives.
    static void watch(QWidget *box);

protected:
    bool eventFilter(QObject *box, QEvent *event) override;

private:
    using QObject::QObject;
};
