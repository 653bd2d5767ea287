#include "explorer/frmFind.h"

#include "explorer/ListItems.h"
#include "explorer/frmTree.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopeGuard>

namespace {
constexpr qint64 millisecondsBetweenCounts = 33; // showing each would cost more than finding it
}

// A window of its own, so that the explorer can come to the front.
frmFind::frmFind() : mfrmTree(frmTree::instance()), m_hits(&ListItems::picture)
{
    ui.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    ui.lstFind->setModel(&m_hits);
    ui.lstFind->setMouseTracking(true);
    m_widths = new ColumnWidths(*ui.lstFind, m_hits);
    connect(&mobjTools, &clsTools::ChangeList, this, &frmFind::mobjTools_ChangeList);
    connect(&mfrmTree, &frmTree::FormUnload, this, &QWidget::close);
    connect(&mfrmTree, &QObject::destroyed, this, [] { unload(); });
    onUserAction(ui.cmdStart, &QPushButton::clicked, this, &frmFind::cmdStart_Click);
    onUserAction(ui.cmdStop, &QPushButton::clicked, this, &frmFind::cmdStop_Click);
    onUserAction(ui.cmdGoto, &QPushButton::clicked, this, &frmFind::cmdGoto_Click);
    onUserAction(ui.lstFind, &QAbstractItemView::doubleClicked, this, &frmFind::cmdGoto_Click);
    connect(ui.lstFind->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmFind::lstFind_ItemClick);
    connect(ui.lstFind, &QAbstractItemView::entered, this, &frmFind::showHint);
    connect(ui.lstFind->header(), &QHeaderView::sectionClicked, this,
            [this](int column) { m_hits.clickHeading(column); });
    connect(ui.cmdClose, &QPushButton::clicked, this, &QWidget::close);
    ui.lblHint->hide();
    setSearching(false);
}

void frmFind::Startup()
{
    // Hits of a search before keep their headings.
    if (m_hits.count() == 0) {
        m_hits.setColumns(mfrmTree.view()->row.findColumns);
        m_widths->reset();
    }
    ui.txtFind->setFocus();
    ui.txtFind->selectAll();
}

void frmFind::cmdStart_Click()
{
    if (ui.txtFind->text().trimmed().isEmpty()) {
        inform("Please enter the text to find.");
        return;
    }
    if (m_inSearch) // the one that was stopped has not come to its end yet
        return;
    m_inSearch = true;
    setSearching(true);
    m_sinceCountShown.start();
    m_hits.clear();
    Startup();
    const auto end = qScopeGuard([this] {
        m_inSearch = false;
        setSearching(false);
        ui.sbr1->showMessage(QStringLiteral("%1 item(s) found.").arg(m_hits.count()));
        ui.lblHint->setVisible(m_hits.count() == 0);
        if (m_closeAfterSearch)
            close();
    });
    mobjTools.Find(*mfrmTree.view(), ui.txtFind->text(), m_hits);
}

void frmFind::cmdStop_Click()
{
    mobjTools.stop();
    setSearching(false);
}

void frmFind::mobjTools_ChangeList()
{
    if (m_sinceCountShown.elapsed() < millisecondsBetweenCounts)
        return;
    m_sinceCountShown.restart();
    ui.sbr1->showMessage(QStringLiteral("Searching... Found: %1").arg(mobjTools.foundCount()));
}

void frmFind::lstFind_ItemClick()
{
    ui.cmdGoto->setEnabled(ui.lstFind->currentIndex().isValid());
    showHint(ui.lstFind->currentIndex());
}

void frmFind::showHint(const QModelIndex &index)
{
    if (index.isValid() && !mobjTools.isSearching())
        ui.sbr1->showMessage("Double click to go to " + m_hits.item(index.row()).text);
}

void frmFind::cmdGoto_Click()
{
    const QModelIndex index = ui.lstFind->currentIndex();
    if (!index.isValid())
        return;
    const ListItem hit = m_hits.item(index.row());
    if (!mfrmTree.goToHit(hit))
        inform("Unable to find the tree node " + hit.path
               + ". Make sure that the View mode has not changed since you ran this search. If so, please click on the "
                 "Start button to refresh the results.");
}

void frmFind::setSearching(bool searching)
{
    ui.cmdStart->setEnabled(!searching);
    ui.cmdStop->setEnabled(searching);
    ui.cmdGoto->setEnabled(!searching && ui.lstFind->currentIndex().isValid());
}

// A search that is under way is ended first; the window goes when it is.
void frmFind::closeEvent(QCloseEvent *event)
{
    m_closeAfterSearch = mobjTools.isSearching();
    mobjTools.stop();
    event->setAccepted(!m_closeAfterSearch);
}

// Enter on a hit goes there; elsewhere it starts the search. Down leads from the text to the hits.
void frmFind::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && focusWidget() == ui.lstFind) {
        runUserAction([this] { cmdGoto_Click(); });
    } else if (event->key() == Qt::Key_Down && focusWidget() == ui.txtFind && m_hits.count() > 0) {
        ui.lstFind->setFocus();
        ui.lstFind->setCurrentIndex(m_hits.index(0, 0));
    } else if (const int column = event->key() - Qt::Key_1;
               event->modifiers() == Qt::ControlModifier && column >= 0 && column < m_hits.columnCount()) {
        m_hits.clickHeading(column);
    } else {
        QDialog::keyPressEvent(event);
    }
}

void frmFind::reject() { close(); }
