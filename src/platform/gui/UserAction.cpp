#include "platform/gui/UserAction.h"

#include "platform/engine/EngineError.h"
#include "platform/gui/MsgBox.h"

#include <new>

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
