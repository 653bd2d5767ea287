#include "app/mdiMain.h"

#include "app/MenuTable.h"
#include "app/frmSplash.h"
#include "common/ProgramState.h"
#include "explorer/frmTree.h"
#include "platform/gui/ChangeBar.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/Icons.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/ScreenFit.h"
#include "platform/gui/UserAction.h"
#include "platform/system/ProgramFolder.h"
#include "platform/system/UserSettings.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QToolBar>

namespace {
constexpr QSize usualSize(860, 660);
constexpr int pictureSide = 24;
const auto framePlace = QStringLiteral("mdiMain/geometry");
}

mdiMain::mdiMain() : m_clientArea(new QMdiArea)
{
    setObjectName("mdiMain");
    setTheMainFrame(this);
    setCentralWidget(m_clientArea);
    // Where the frame has become too small for a child window
    m_clientArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_clientArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    makeMenus();
    makeToolbar();
    showStatus({}); // its height counts when the explorer is placed
    resize(usualSize.boundedTo(ScreenFit::roomFor(this).size()));
}

mdiMain::~mdiMain() { setTheMainFrame(nullptr); }

void mdiMain::Load()
{
    frmSplash &splash = frmSplash::instance();
    const struct Unload {
        ~Unload() { frmSplash::unload(); }
    } atTheEnd;
    splash.show();
    splash.repaint();
    const HourGlass busy;
    const QByteArray place = UserSettings::value(framePlace);
    restoreGeometry(place);
    // The explorer is placed before the frame is shown, by the size that it will have then.
    if (isMaximized())
        resize(ScreenFit::roomFor(this).size());
    setWindowTitle("Dorvak Vorlane Manager Version " + ProgramFolder::version());
    frmTree::instance().Startup(true);
    restoreGeometry(place);
}

void mdiMain::makeMenus()
{
    for (const MenuRow &row : menuTable()) {
        QMenu *menu = row.hidden ? new QMenu(this) : menuBar()->addMenu(row.caption);
        menu->setTitle(row.caption);
        menu->setObjectName(row.name);
        m_menus.insert(row.name, menu);
        for (const MenuEntry &entry : row.entries) {
            QAction *action = entry.caption ? menu->addAction(entry.caption) : menu->addSeparator();
            action->setObjectName(entry.name);
            m_entries.insert(entry.name, action);
            if (entry.command)
                onUserAction(action, &QAction::triggered, entry.command);
        }
    }
    // Announced to the crib, on no menu yet.
    auto *deleteScrapped = new QAction("Delete Scrapped Tool", this);
    deleteScrapped->setObjectName("mnuDeleteScrapped");
    m_entries.insert("mnuDeleteScrapped", deleteScrapped);
    onUserAction(deleteScrapped, &QAction::triggered, this, &mdiMain::mnuDeleteScrapped_Click);
    // The suite brings its own tables and reports.
    for (const char *name : {"mnuTables", "mnuReports"})
        menu(name)->menuAction()->setVisible(!ProgramState::SuiteInstalled);
    connect(menu("mnuWindow"), &QMenu::aboutToShow, this, &mdiMain::mnuWindow_AboutToShow);
}

void mdiMain::makeToolbar()
{
    m_toolbar = addToolBar("Tools");
    m_toolbar->setObjectName("Toolbar1");
    m_toolbar->setMovable(false);
    m_toolbar->setIconSize({pictureSide, pictureSide});
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    QAction *tools = m_toolbar->addAction(Icons::icon("tools"), "Tools");
    tools->setObjectName("Toolbar1_1");
    onUserAction(tools, &QAction::triggered, [this] { showTools(); });
}

void mdiMain::showTools()
{
    frmTree &explorer = frmTree::instance();
    explorer.Startup(false);
    bringToFront(&explorer);
}

void mdiMain::bringToFront(QWidget *child)
{
    auto *window = qobject_cast<QMdiSubWindow *>(child->parentWidget());
    activateWindow();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    m_clientArea->setActiveSubWindow(window);
}

void mdiMain::mnuWindow_AboutToShow()
{
    QMenu *windows = menu("mnuWindow");
    windows->clear();
    const QList<QMdiSubWindow *> open = m_clientArea->subWindowList();
    for (QMdiSubWindow *window : open) {
        const int number = int(open.indexOf(window)) + 1;
        QAction *entry = windows->addAction(QStringLiteral("&%1 %2").arg(number).arg(window->windowTitle()));
        entry->setCheckable(true);
        entry->setChecked(window == m_clientArea->activeSubWindow());
        connect(entry, &QAction::triggered, window, [this, window] { bringToFront(window->widget()); });
    }
    if (open.isEmpty())
        windows->addAction("(none)")->setEnabled(false);
}

void mdiMain::showChildWindow(QWidget *child, const QSize &size)
{
    QMdiSubWindow *window = m_clientArea->addSubWindow(child);
    window->setAttribute(Qt::WA_DeleteOnClose);
    connect(child, &QObject::destroyed, window, &QObject::deleteLater); // a child may close itself
    const QSize wanted = size.expandedTo(window->minimumSizeHint()); // large fonts need more
    window->resize(wanted);
    layout()->activate(); // the first child comes before the frame is shown
    const QSize client = m_clientArea->size();
    const int top = (client.height() - m_toolbar->height() - wanted.height()) / 2;
    window->move((client.width() - wanted.width()) / 2, qMax(0, top));
    child->show();
    // On a small screen the child takes what there is.
    if (wanted.boundedTo(client) == wanted)
        window->show();
    else
        window->showMaximized();
}

void mdiMain::popUp(const QString &name, const QPoint &globalPosition, const QStringList &leftOut)
{
    const QList<QAction *> entries = menu(name)->actions();
    for (QAction *entry : entries)
        entry->setVisible(!leftOut.contains(entry->objectName()));
    menu(name)->exec(globalPosition);
}

void mdiMain::showStartProgress(int percent, const QString &status)
{
    if (!frmSplash::isLoaded())
        return;
    frmSplash &splash = frmSplash::instance();
    if (!status.isEmpty())
        splash.ui.lblStat->setText(status);
    splash.ui.pb1->setValue(percent);
}

void mdiMain::mnuDeleteScrapped_Click() { msgBox({.text = "Delete Scrapped Tool Under Construction"}); }

void mdiMain::closeEvent(QCloseEvent *event)
{
    // The desktop asks even past a modal window; a change that runs under its bar comes to its end first.
    if (qobject_cast<ChangeBar *>(QApplication::activeModalWidget())) {
        event->ignore();
        return;
    }
    event->accept();
    UserSettings::setValue(framePlace, saveGeometry());
    // The main window's end is the program's, whatever else is open.
    QApplication::quit();
}
