#pragma once

#include <QElapsedTimer>
#include <QLineEdit>

/// The field that a scanner types into: a code, then Enter or Tab. What a scanner makes of dirt on a label must not
/// become another code, so no control key but the ones for pasting does anything here, and a character that cannot be
/// read makes the whole unreadable.
class ScanField : public QLineEdit
{
    Q_OBJECT
public:
    explicit ScanField(QWidget *parent = nullptr);

signals:
    void scanned(const QString &text);
    /// Up, Down, Page Up, Page Down; and Space or Enter in an empty field. They go to the list below.
    void steered(int key);
    void dismissed();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QElapsedTimer m_sinceKey;
};
