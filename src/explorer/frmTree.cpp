#include "explorer/frmTree.h"

#include "common/MainFrame.h"
#include "common/ProgramState.h"
#include "explorer/ListColumns.h"
#include "platform/gui/Handler.h"
#include "platform/gui/Icons.h"
#include "platform/gui/Twips.h"
#include "transactions/MainSubs.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>

namespace {
constexpr int startWidth = 11325, startHeight = 7125; // twips
constexpr int treeShare = 35, listShare = 65; // per cent of the splitter at first
constexpr const char *modes[] = {"type", "location", "checkedOut", "scrap"}; // by option button
}

frmTree::frmTree()
{
    ui.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(Icons::icon("tools"));
    ui.Split->setStretchFactor(0, treeShare);
    ui.Split->setStretchFactor(1, listShare);
    const std::pair<QPushButton *, const char *> pictures[] = {
        {ui.cmdNew, "new"},
        {ui.cmdEdit, "edit"},
        {ui.cmdDelete, "delete"},
        {ui.cmdCheckOut, "check-out"},
        {ui.cmdCheckIn, "check-in"},
        {ui.cmdScrapTool, "scrap"},
        {ui.cmdRestoreScrap, "restore"},
        {ui.cmdQuery, "query"},
        {ui.cmdFind, "find"},
        {ui.cmdRefresh, "refresh"},
        {ui.cmdClose, "close"},
    };
    for (const auto &[button, picture] : pictures)
        button->setIcon(Icons::icon(picture));

    for (int index = 0; index < 4; ++index)
        connect(options()[index], &QRadioButton::toggled, this, [this, index](bool checked) {
            if (checked)
                runUserAction([this, index] { optMode_Click(index); });
        });
    onUserAction(ui.tvMain, &TreeView::nodeClicked, this, &frmTree::tvMain_NodeClick);
    onUserAction(ui.tvMain, &TreeView::popUpWanted, this, &frmTree::tvMain_PopUp);
    onUserAction(ui.tvMain, &TreeView::itemsDropped, this, &frmTree::lstToolList_DragDrop);
    onUserAction(ui.tvMain, &TreeView::nodeDropped, this, &frmTree::tvMain_DragDrop);
    connect(ui.tvMain, &QTreeView::expanded, this,
            [this](const QModelIndex &index) { tvMain_Expand(nodes().nodeAt(index)); });
    connect(ui.lstToolList, &ToolListView::touched, this, [] { ProgramState::TreeHasFocus = false; });
    connect(ui.lstToolList, &ToolListView::itemPressed, this, [this] { ui.tvMain->setDropHighlight(nullptr); });
    onUserAction(ui.lstToolList, &ToolListView::popUpWanted, this, &frmTree::lstToolList_PopUp);
    onUserAction(ui.lstToolList, &ToolListView::itemOpened, this, &frmTree::lstToolList_DblClick);
    onUserAction(ui.cmdCheckOut, &QPushButton::clicked, &MainSubs::CheckOutSelectedTool);
    onUserAction(ui.cmdCheckIn, &QPushButton::clicked, &MainSubs::CheckInSelectedTool);
    onUserAction(ui.cmdRestoreScrap, &QPushButton::clicked, &MainSubs::RestoreSelectedScrap);
    onUserAction(ui.cmdNew, &QPushButton::pressed, this, &frmTree::cmdNew_MouseDown);
    onUserAction(ui.cmdEdit, &QPushButton::clicked, this, &frmTree::cmdEdit_Click);
    onUserAction(ui.cmdEdit, &QWidget::customContextMenuRequested, this, &frmTree::cmdEdit_PopUp);
    onUserAction(ui.cmdDelete, &QPushButton::clicked, this, &frmTree::cmdDelete_Click);
    onUserAction(ui.cmdScrapTool, &QPushButton::clicked, this, &frmTree::cmdScrapTool_Click);
    onUserAction(ui.cmdQuery, &QPushButton::clicked, this, &frmTree::cmdQuery_Click);
    onUserAction(ui.cmdFind, &QPushButton::clicked, this, &frmTree::cmdFind_Click);
    onUserAction(ui.cmdRefresh, &QPushButton::clicked, this, &frmTree::cmdRefresh_Click);
    connect(ui.cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto *move = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_M), this);
    move->setContext(Qt::WidgetWithChildrenShortcut);
    onUserAction(move, &QShortcut::activated, this, &frmTree::moveToPicked);

    {
        const QSignalBlocker quiet(ui.optMode0);
        ui.optMode0->setChecked(true);
    }
    optMode_Click(0);
    setTheExplorer(this);
}

frmTree::~frmTree()
{
    if (explorerIfOpen() == this)
        setTheExplorer(nullptr);
}

void frmTree::Startup(bool showProgress)
{
    if (m_started)
        return;
    m_started = true;
    m_mode.clear();
    MainFrame &mdi = theMainFrame();
    onUserAction(&mdi, &MainFrame::TreeNewTool, this, &frmTree::mdi_TreeNewTool);
    onUserAction(&mdi, &MainFrame::TreeNewType, this, &frmTree::mdi_TreeNewType);
    onUserAction(&mdi, &MainFrame::TreeNewLocation, this, &frmTree::mdi_TreeNewLocation);
    mdi.showChildWindow(this, {Twips::toPixels(startWidth), Twips::toPixels(startHeight)});
    const HourGlass busy;
    if (showProgress) {
        mdi.showStartProgress(5, "Loading Data from database...");
        mdi.showStartProgress(40);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    ViewByType();
    ui.tvMain->setFocus();
    if (showProgress)
        mdi.showStartProgress(100);
}

std::array<QRadioButton *, 4> frmTree::options() const { return {ui.optMode0, ui.optMode1, ui.optMode2, ui.optMode3}; }

void frmTree::optMode_Click(int index)
{
    const QString mode = modes[index];
    ui.lstToolList->setColumns(MainSubs::listColumns(mode));
    try {
        showMode(mode);
    } catch (...) {
        // A view that could not even be begun leaves the one before, with its columns and its option.
        if (m_mode != mode && !m_mode.isEmpty()) {
            ui.lstToolList->setColumns(MainSubs::listColumns(m_mode));
            for (int other = 0; other < 4; ++other) {
                const QSignalBlocker quiet(options()[other]);
                options()[other]->setChecked(m_mode == modes[other]);
            }
        }
        throw;
    }
}

void frmTree::showMode(const QString &mode)
{
    if (mode == "location")
        ViewByLocation();
    else if (mode == "checkedOut")
        ViewByCheckedOut();
    else if (mode == "scrap")
        ViewByScrap();
    else
        ViewByType();
}

const ListItem *frmTree::selectedItem() const
{
    const int row = ui.lstToolList->selectedRow();
    return row < 0 ? nullptr : &items().item(row);
}

void frmTree::patchSelectedItem(const ListItem &item) { items().replace(ui.lstToolList->selectedRow(), item); }

void frmTree::removeSelectedItem()
{
    const int row = ui.lstToolList->selectedRow();
    items().remove(row);
    if (itemCount() > 0)
        ui.lstToolList->selectRow(qMin(row, itemCount() - 1));
}

int frmTree::itemCount() const { return items().count(); }

void frmTree::selectFirstItem()
{
    ui.lstToolList->selectRow(0);
    ProgramState::TreeHasFocus = false;
}

void frmTree::focusList() { ui.lstToolList->setFocus(); }

void frmTree::listSelectedNode()
{
    if (Node *node = ui.tvMain->selectedNode())
        tvMain_NodeClick(node);
}

void frmTree::rebuildView() { showMode(m_mode); }

void frmTree::closeEvent(QCloseEvent *event)
{
    m_started = false;
    emit FormUnload();
    event->accept();
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
