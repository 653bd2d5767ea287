#pragma once

#include "platform/gui/MsgBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

/// Stands in for the person at the screen during one test: answers message boxes in the order given and keeps what
/// they said. A box that nobody expected fails the test instead of hanging it.
class ScriptedUser
{
public:
    ScriptedUser()
    {
        setMsgBoxPresenter([this](const MsgBoxCall &call) {
            seen.append(call);
            if (m_answers.isEmpty()) {
                QTest::qFail(qPrintable("unexpected message box: " + call.text), __FILE__, __LINE__);
                return QMessageBox::Cancel;
            }
            return m_answers.takeFirst();
        });
    }
    ~ScriptedUser() { setMsgBoxPresenter({}); }
    ScriptedUser &answers(QMessageBox::StandardButton button, int times = 1)
    {
        while (times-- > 0)
            m_answers.append(button);
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

    QList<MsgBoxCall> seen;

private:
    QList<QMessageBox::StandardButton> m_answers;
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
