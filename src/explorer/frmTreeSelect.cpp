#include "explorer/frmTreeSelect.h"

#include "common/ItemId.h"
#include "db/Session.h"
#include "platform/gui/Icons.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"

namespace {

// Stands for the unread branch of a folder, so that the folder can be expanded. It is known by its key: a crib may
// well have a folder of that name.
const auto placeholder = QStringLiteral("garbage");

ItemId idOf(const KeyedTree::Node *node) { return ItemId::of(*node, ItemId::folder); }

bool isUnread(const KeyedTree::Node *node)
{
    return node->children.size() == 1 && node->children.front()->key.startsWith(placeholder);
}

}

constinit const frmTreeSelect::Kind frmTreeSelect::types{
    .title = "Tool Types",
    .keyPrefix = "t",
    .foldersOf = "Select * from types where parent = %1 order by description",
    .anyBelow = "Select * from types where Parent = 0",
};

constinit const frmTreeSelect::Kind frmTreeSelect::locations{
    .title = "Tool Locations",
    .keyPrefix = "l",
    .foldersOf = "Select * from locations where parent = %1 order by description",
    .anyBelow = "Select * from locations where Parent = 0",
};

frmTreeSelect::frmTreeSelect(const QString &mode, QWidget *parent, Root root)
    : QDialog(parent), m_kind(mode == "type" ? types : locations), m_root(root)
{
    ui.setupUi(this);
    ui.tvMain->setModel(&m_tree);
    onUserAction(ui.tvMain, &QTreeView::expanded, this, &frmTreeSelect::tvMain_Expand);
    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &frmTreeSelect::cmdOK_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    setWindowTitle(m_kind.title);
    KeyedTree::Node *top = m_tree.add(nullptr, ItemId().nodeKey(), QStringLiteral("Vorlane"), Icons::icon("root"));
    addFolders(top);
    ui.tvMain->setCurrentIndex(m_tree.indexOf(top));
    ui.tvMain->expand(m_tree.indexOf(top));
}

std::optional<PickedFolder> frmTreeSelect::pick(const QString &mode, QWidget *parent, Root root)
{
    frmTreeSelect picker(mode, parent, root);
    if (picker.exec() != Accepted)
        return {};
    return PickedFolder{.id = picker.ui.txtId->text().toInt(), .path = picker.ui.txtDir->text()};
}

void frmTreeSelect::addFolders(KeyedTree::Node *parent)
{
    const ReadScope reading(Session::database());
    Recordset folders = openRecordset(QString(m_kind.foldersOf).arg(idOf(parent).digits()));
    m_tree.removeChildren(parent);
    SelectByNumber anyBelow(Session::database(), m_kind.anyBelow);
    for (; !folders.atEnd(); folders.moveNext()) {
        const QString id = folders.text(u"ID");
        if (KeyedTree::Node *known = m_tree.find(m_kind.keyPrefix + id)) {
            // Moved here since its old place was read; or, when that is above, part of a circle.
            if (KeyedTree::isWithin(parent, known))
                continue;
            m_tree.remove(known);
        }
        KeyedTree::Node *node =
            m_tree.add(parent, m_kind.keyPrefix + id, folders.text(u"Description"), Icons::folder());
        if (!anyBelow.open(id.toLongLong()).isEmpty())
            m_tree.add(node, placeholder + id, placeholder, Icons::folder());
    }
}

void frmTreeSelect::tvMain_Expand(const QModelIndex &index)
{
    KeyedTree::Node *node = m_tree.nodeAt(index);
    if (!isUnread(node))
        return;
    ui.tvMain->collapse(index); // and so it stays if the branch cannot be read
    addFolders(node);
    ui.tvMain->expand(m_tree.indexOf(node)); // which may have another row by now
}

void frmTreeSelect::cmdOK_Click()
{
    const QModelIndexList selected = ui.tvMain->selectionModel()->selectedIndexes();
    const KeyedTree::Node *node = selected.isEmpty() ? nullptr : m_tree.nodeAt(selected.first());
    if (!node || (node == m_tree.root() && m_root == Root::Refused)) {
        inform(QStringLiteral("You must select a Path!"));
        return;
    }
    ui.txtDir->setText(KeyedTree::fullPath(node));
    ui.txtId->setText(idOf(node).digits());
    accept();
}
