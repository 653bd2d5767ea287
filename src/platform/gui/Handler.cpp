#include "platform/gui/Handler.h"

#include "platform/engine/EngineError.h"
#include "platform/gui/MsgBox.h"

#include <QApplication>

#include <new>

HourGlass::HourGlass() { QApplication::setOverrideCursor(Qt::WaitCursor); }

HourGlass::~HourGlass() { QApplication::restoreOverrideCursor(); }

NormalPointer::NormalPointer()
{
    for (; QApplication::overrideCursor(); ++m_hidden)
        QApplication::restoreOverrideCursor();
}

NormalPointer::~NormalPointer()
{
    while (m_hidden-- > 0)
        QApplication::setOverrideCursor(Qt::WaitCursor);
}

void runUserAction(const std::function<void()> &action)
{
    QString problem;
    try {
        action();
        return;
    } catch (const EngineError &error) {
        problem = error.text();
    } catch (const std::bad_alloc &) {
        problem = QStringLiteral("Not enough memory.");
    } catch (const std::exception &error) {
        problem = QString::fromUtf8(error.what());
    }
    msgBox({.text = problem, .icon = QMessageBox::Critical});
}
