#pragma once

#include "platform/gui/MsgBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

/// A message box in one line, the default button marked: "Delete (question): Delete this item? [Yes] [No]*".
inline QString inOneLine(const MsgBoxCall &box)
{
    QString line = box.caption;
    if (box.icon != QMessageBox::NoIcon)
        line += " (" + QVariant::fromValue(box.icon).toString().toLower() + ')';
    line += ": " + box.text;
    for (const auto &[button, name] : {std::pair(QMessageBox::Ok, " [OK]"),
                                       {QMessageBox::Yes, " [Yes]"},
                                       {QMessageBox::No, " [No]"},
                                       {QMessageBox::Cancel, " [Cancel]"}})
        if (box.buttons.testFlag(button))
            line += name + QString(box.defaultButton == button ? "*" : "");
    return line;
}

/// The program's usual remark.
inline QString remark(const QString &text) { return "System Message (information): " + text + " [OK]"; }

inline QMessageBox::StandardButton nobodyAnswers(const MsgBoxCall &call)
{
    QTest::qFail(qPrintable("unexpected message box: " + call.text), __FILE__, __LINE__);
    return QMessageBox::Cancel;
}
inline void leaveTheScreen() { setMsgBoxPresenter(nobodyAnswers); }
Q_COREAPP_STARTUP_FUNCTION(leaveTheScreen)

/// Stands in for the person at the screen during one test: answers message boxes in the order given and keeps what
/// they said. A box that nobody expected fails the test instead of hanging it, and so does one that never came.
class ScriptedUser
{
public:
    ScriptedUser()
    {
        setMsgBoxPresenter([this](const MsgBoxCall &call) {
            seen.append(call);
            if (auto others = std::exchange(m_others, {}))
                others();
            return m_answers.isEmpty() ? nobodyAnswers(call) : m_answers.takeFirst();
        });
    }
    explicit ScriptedUser(QMessageBox::StandardButton answer, int times = 1) : ScriptedUser()
    {
        answers(answer, times);
    }
    ~ScriptedUser()
    {
        leaveTheScreen();
        if (!done() && !QTest::currentTestFailed())
            QTest::qFail("a message box never came up", __FILE__, __LINE__);
    }
    Q_DISABLE_COPY_MOVE(ScriptedUser)

    ScriptedUser &answers(QMessageBox::StandardButton button, int times = 1)
    {
        while (times-- > 0)
            m_answers.append(button);
        return *this;
    }
    /// What somebody else does while the next box is on the screen.
    ScriptedUser &meanwhile(std::function<void()> others)
    {
        m_others = std::move(others);
        return *this;
    }
    /// Every answer was asked for.
    bool done() const { return m_answers.isEmpty(); }
    QStringList texts() const
    {
        QStringList all;
        for (const MsgBoxCall &box : seen)
            all.append(box.text);
        return all;
    }

    /// All boxes, each in one line.
    QStringList boxes() const
    {
        QStringList all;
        for (const MsgBoxCall &box : seen)
            all.append(inOneLine(box));
        return all;
    }

    QList<MsgBoxCall> seen;

private:
    QList<QMessageBox::StandardButton> m_answers;
    std::function<void()> m_others;
};

/// Runs `steps` on the next modal dialog of class Dialog, then closes the dialog if it is still open. Gives up after
/// two seconds, so that exec() cannot hang a test.
template<typename Dialog, typename Steps>
void whenModal(Steps steps)
{
    auto *poll = new QTimer(qApp);
    auto since = std::make_shared<QElapsedTimer>();
    since->start();
    QObject::connect(poll, &QTimer::timeout, qApp, [poll, since, steps] {
        auto *dialog = dynamic_cast<Dialog *>(QApplication::activeModalWidget());
        // Until the window is active, none of its controls has the focus.
        if (!(dialog && dialog->isActiveWindow()) && since->elapsed() < 2000)
            return;
        poll->stop();
        poll->deleteLater();
        if (!dialog) {
            QTest::qFail("the modal dialog never came up", __FILE__, __LINE__);
            if (auto *other = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                other->reject();
            return;
        }
        steps(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
    poll->start(5);
}
