// The explorer's keys: those with Ctrl, the letters of the buttons, Delete and F5.
#include "explorer/frmTree.h"
#include "platform/gui/UserAction.h"

#include <QKeyEvent>
#include <QShortcut>

namespace {
constexpr int splitStep = 20; // pixels
}

// Keys with Ctrl, anywhere in the explorer; those with Alt are the letters of the buttons.
void frmTree::bindKeys()
{
    onKey(Qt::Key_M, &frmTree::moveToPicked);
    onKey(Qt::Key_P, &frmTree::printList);
    onKey(Qt::Key_F10, &frmTree::toggleMaximized);
    for (const auto &[key, by] : {std::pair(Qt::Key_Left, -splitStep), std::pair(Qt::Key_Right, splitStep)}) {
        // In the list the same keys are those of its columns.
        auto *split = new QShortcut(Qt::CTRL | Qt::SHIFT | key, ui.tvMain);
        split->setContext(Qt::WidgetShortcut);
        connect(split, &QShortcut::activated, this, [this, by = by] { moveSplit(by); });
    }
}

void frmTree::onKey(Qt::Key key, void (frmTree::*command)())
{
    auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    onUserAction(shortcut, &QShortcut::activated, this, command);
}

// Several captions of the frame's menus, the views and the commands share a letter. The commands have it: an
// attendant lends with Alt+T dozens of times an hour.
bool frmTree::event(QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QWidget::event(event);
    QAbstractButton *command = commandOf(*static_cast<QKeyEvent *>(event));
    if (!command)
        return QWidget::event(event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
        command->click();
    return true;
}

QAbstractButton *frmTree::commandOf(const QKeyEvent &key) const
{
    if (key.modifiers() == Qt::NoModifier && key.key() == Qt::Key_Delete)
        return ui.cmdDelete;
    if (key.modifiers() == Qt::NoModifier && key.key() == Qt::Key_F5)
        return ui.cmdRefresh;
    if (key.modifiers() != Qt::AltModifier)
        return nullptr;
    const QKeySequence pressed(key.keyCombination());
    const auto commands = ui.picOptions->findChildren<QAbstractButton *>();
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](auto *button) { return QKeySequence::mnemonic(button->text()) == pressed; });
    return found == commands.end() ? nullptr : *found;
}

void frmTree::moveSplit(int by)
{
    const QList<int> sizes = ui.Split->sizes();
    ui.Split->setSizes({sizes[0] + by, sizes[1] - by});
}

void frmTree::toggleMaximized()
{
    if (QWidget *window = parentWidget())
        window->setWindowState(window->windowState() ^ Qt::WindowMaximized);
}
