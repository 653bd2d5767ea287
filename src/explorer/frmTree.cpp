#include "explorer/frmTree.h"

#include "common/ItemId.h"
#include "common/MainFrame.h"
#include "explorer/StatusLine.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/Icons.h"
#include "platform/gui/Twips.h"
#include "platform/gui/UserAction.h"
#include "platform/system/UserSettings.h"
#include "transactions/ToolCommands.h"

#include <QCloseEvent>

namespace {
constexpr int startWidth = 11325, startHeight = 7125; // twips
constexpr int treeShare = 1, listShare = 2; // of the splitter at first
const auto splitPlace = QStringLiteral("frmTree/Split");
}

frmTree::frmTree() : m_panes(ui, TreeHasFocus)
{
    ui.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(Icons::icon("tools"));
    ui.Split->setStretchFactor(0, treeShare);
    ui.Split->setStretchFactor(1, listShare);
    ui.Split->restoreState(UserSettings::value(splitPlace));
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
    onUserAction(ui.tvMain, &TreePane::nodeClicked, this, &frmTree::tvMain_NodeClick);
    onUserAction(ui.tvMain, &TreePane::popUpWanted, this, &frmTree::tvMain_PopUp);
    onUserAction(ui.tvMain, &TreePane::itemsDropped, this, &frmTree::lstToolList_DragDrop);
    onUserAction(ui.tvMain, &TreePane::nodeDropped, this, &frmTree::tvMain_DragDrop);
    connect(ui.tvMain, &TreePane::gestureEnded, this, [this] { m_panes.followListed(); });
    connect(ui.tvMain, &QTreeView::expanded, this, [this](const QModelIndex &index) {
        if (!ui.tvMain->draggedNode())
            runUserAction([&] { m_panes.openNode(ui.tvMain->nodes().nodeAt(index)); });
    });
    connect(ui.lstToolList, &ListPane::touched, this, [this] { m_panes.setInCharge(false); });
    connect(ui.tvMain, &TreePane::touched, this, [this] { m_panes.setInCharge(true); });
    connect(ui.lstToolList, &ListPane::itemPressed, this, [this] { ui.tvMain->setDropHighlight(nullptr); });
    connect(ui.lstToolList->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmTree::showSelectedCount);
    connect(&ui.lstToolList->items(), &QAbstractItemModel::modelReset, this, &frmTree::showSelectedCount);
    onUserAction(ui.lstToolList, &ListPane::popUpWanted, this, &frmTree::lstToolList_PopUp);
    onUserAction(ui.lstToolList, &ListPane::itemOpened, this, &frmTree::lstToolList_DblClick);
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
    bindKeys();
    m_statusLine = new StatusLine(m_panes, *ui.lstToolList);
    m_statusLine->setParent(this);

    {
        const QSignalBlocker quiet(ui.optMode0);
        ui.optMode0->setChecked(true);
    }
    optMode_Click(0);
    setTheExplorer(this);
}

frmTree::~frmTree()
{
    UserSettings::setValue(splitPlace, ui.Split->saveState());
    if (explorerIfOpen() == this)
        setTheExplorer(nullptr);
}

void frmTree::Startup(bool showProgress)
{
    if (m_started)
        return;
    m_started = true;
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
    m_panes.isStarted = true;
    ViewByType();
    ui.tvMain->setFocus();
    if (showProgress)
        mdi.showStartProgress(100);
}

std::array<QRadioButton *, 4> frmTree::options() const { return {ui.optMode0, ui.optMode1, ui.optMode2, ui.optMode3}; }

void frmTree::optMode_Click(int index)
{
    const View *before = view();
    const View *wanted = View::all()[size_t(index)];
    ui.lstToolList->setColumns(wanted->row.columns);
    try {
        m_panes.show(*wanted);
    } catch (...) {
        // A view that could not even be begun leaves the one before, with its columns and its option.
        if (before && view() == before) {
            ui.lstToolList->setColumns(before->row.columns);
            for (size_t other = 0; other < View::all().size(); ++other) {
                const QSignalBlocker quiet(options()[other]);
                options()[other]->setChecked(View::all()[other] == before);
            }
        }
        throw;
    }
}

void frmTree::ViewByType() { m_panes.show(*View::all()[0]); }
void frmTree::ViewByLocation() { m_panes.show(*View::all()[1]); }
void frmTree::ViewByCheckedOut() { m_panes.show(*View::all()[2]); }
void frmTree::ViewByScrap() { m_panes.show(*View::all()[3]); }

const ListItem *frmTree::selectedItem() const
{
    const int row = ui.lstToolList->selectedRow();
    return row < 0 ? nullptr : &m_panes.items().item(row);
}

void frmTree::patchSelectedItem(const ListItem &item) { m_panes.items().replace(ui.lstToolList->selectedRow(), item); }

void frmTree::removeSelectedItem()
{
    const int row = ui.lstToolList->selectedRow();
    m_panes.items().remove(row);
    if (itemCount() > 0)
        ui.lstToolList->selectRow(qMin(row, itemCount() - 1));
}

void frmTree::narrowSelection()
{
    const size_t selected = ui.lstToolList->selectedRows().size();
    if (selected < 2)
        return;
    ui.lstToolList->selectRow(ui.lstToolList->selectedRow());
    ui.lblSelected->setText(QStringLiteral("1 of %1 selected").arg(selected));
}

void frmTree::showSelectedCount()
{
    const size_t selected = ui.lstToolList->selectedRows().size();
    ui.lblSelected->setText(selected < 2 ? QString() : QStringLiteral("%1 selected").arg(selected));
}

int frmTree::itemCount() const { return m_panes.items().count(); }

void frmTree::selectFirstItem()
{
    ui.lstToolList->selectRow(0);
    m_panes.setInCharge(false);
}

void frmTree::focusList()
{
    ui.lstToolList->setFocus();
    m_panes.setInCharge(false);
}

void frmTree::addChildNode(const QString &mode, int parentId, int id, const QString &text)
{
    if (mode != view()->mode())
        return;
    const ItemId above{parentId == 0 ? ItemId::root : ItemId::folder, parentId};
    Node *parent = m_panes.nodes().find(above.nodeKey());
    if (!parent)
        return;
    m_panes.nodes().add(parent, ItemId{ItemId::folder, id}.nodeKey(), text, Icons::folder())->sorted = true;
    m_panes.showHint();
    ui.tvMain->expandNode(parent);
}

void frmTree::renameNode(const QString &mode, int id, const QString &text)
{
    if (mode != view()->mode())
        return;
    if (Node *node = m_panes.nodes().find(ItemId{ItemId::folder, id}.nodeKey()))
        m_panes.renamed(node, text);
}

// The explorer comes to the front; the find dialog stays open behind it.
bool frmTree::goToHit(const ListItem &hit)
{
    // By number, as siblings may be called alike, if that is the node meant.
    if (const Node *node = m_panes.nodes().find(hit.nodeKey); node && KeyedTree::fullPath(node) == hit.path)
        m_panes.goTo(hit.nodeKey);
    else if (!m_panes.showPath(hit.path))
        return false;
    theMainFrame().bringToFront(this);
    ui.tvMain->setFocus();
    if (hit.icon == ItemIcon::folder)
        return true;
    // A tool that was found is listed under the key of its state.
    const ItemId id = view()->idOf(hit);
    for (const ItemId &state : {id, ItemId{ItemId::toolInStock, id.number}, ItemId{ItemId::toolOut, id.number}})
        if (m_panes.selectItem(state.itemKey())) {
            focusList();
            break;
        }
    return true;
}

void frmTree::closeEvent(QCloseEvent *event)
{
    m_started = false;
    theMainFrame().showStatus({});
    emit FormUnload();
    event->accept();
}
