#include "platform/gui/KeyedTree.h"

#include "platform/text/TextCompare.h"

#include <algorithm>

void KeyedTree::clear()
{
    const Filling filling(*this);
    m_byKey.clear();
    m_root.reset();
}

KeyedTree::Node *KeyedTree::add(Node *parent, const QString &key, const QString &text, const QIcon &icon)
{
    if (!parent && m_root)
        throw KeyError("Element not found");
    auto made = std::make_unique<Node>(Node{.key = key, .text = text, .icon = icon, .parent = parent});
    Node *node = made.get();
    Node *&ofKey = m_byKey[key];
    if (ofKey)
        throw KeyError("Key is not unique in collection");
    ofKey = node;
    if (!parent) {
        const Filling filling(*this);
        m_root = std::move(made);
        return node;
    }
    Children &siblings = parent->children;
    const auto place = parent->sorted ? placeFor(siblings, text) : siblings.end();
    const int row = int(place - siblings.begin());
    if (!isFilling())
        beginInsertRows(indexOf(parent), row, row);
    siblings.insert(place, std::move(made));
    node->row = row;
    if (row + 1 < int(siblings.size()))
        numberRows(siblings);
    if (!isFilling())
        endInsertRows();
    return node;
}

void KeyedTree::removeChildren(Node *node)
{
    if (node->children.empty())
        return;
    if (!isFilling())
        beginRemoveRows(indexOf(node), 0, int(node->children.size()) - 1);
    for (const auto &child : node->children)
        forget(child.get());
    node->children.clear();
    if (!isFilling())
        endRemoveRows();
}

void KeyedTree::remove(Node *node)
{
    Children &siblings = node->parent->children;
    beginRemoveRows(indexOf(node->parent), node->row, node->row);
    forget(node);
    siblings.erase(siblings.begin() + node->row);
    numberRows(siblings);
    endRemoveRows();
}

void KeyedTree::move(Node *node, Node *parent)
{
    Children &from = node->parent->children;
    const int row = int(std::count_if(parent->children.begin(), parent->children.end(), [&](const auto &sibling) {
        return sibling.get() != node && compareText(sibling->text, node->text) <= 0;
    }));
    const bool behindItself = node->parent == parent && row >= node->row;
    if (!beginMoveRows(indexOf(node->parent), node->row, node->row, indexOf(parent), row + behindItself))
        return; // it stands there
    std::unique_ptr<Node> moved = std::move(from[size_t(node->row)]);
    from.erase(from.begin() + node->row);
    numberRows(from);
    node->parent = parent;
    parent->children.insert(parent->children.begin() + row, std::move(moved));
    numberRows(parent->children);
    endMoveRows();
}

void KeyedTree::setText(Node *node, const QString &text)
{
    node->text = text;
    const QModelIndex index = indexOf(node);
    emit dataChanged(index, index);
    if (node->parent && node->parent->sorted)
        move(node, node->parent);
}

KeyedTree::Node *KeyedTree::nodeAt(const QModelIndex &index) const
{
    return static_cast<Node *>(index.internalPointer());
}

QModelIndex KeyedTree::indexOf(const Node *node) const
{
    return node ? createIndex(node->row, 0, node) : QModelIndex();
}

QString KeyedTree::fullPath(const Node *node)
{
    return node->parent ? fullPath(node->parent) + '\\' + node->text : node->text;
}

bool KeyedTree::isWithin(const Node *node, const Node *ancestor)
{
    while (node && node != ancestor)
        node = node->parent;
    return node;
}

QModelIndex KeyedTree::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return indexOf(parent.isValid() ? nodeAt(parent)->children[size_t(row)].get() : m_root.get());
}

QModelIndex KeyedTree::parent(const QModelIndex &index) const
{
    return index.isValid() ? indexOf(nodeAt(index)->parent) : QModelIndex();
}

int KeyedTree::rowCount(const QModelIndex &parent) const
{
    if (isFilling())
        return 0;
    if (parent.isValid())
        return int(nodeAt(parent)->children.size());
    return m_root ? 1 : 0;
}

int KeyedTree::columnCount(const QModelIndex &) const { return 1; }

QVariant KeyedTree::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) // a view without a current item asks so when its text is copied
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return nodeAt(index)->text;
    case Qt::DecorationRole:
        return nodeAt(index)->icon;
    case Qt::AccessibleDescriptionRole:
        return QStringLiteral("folder");
    default:
        return {};
    }
}

KeyedTree::Children::iterator KeyedTree::placeFor(Children &siblings, const QString &text)
{
    // Nodes mostly come in order, as an index gives them.
    if (siblings.empty() || compareText(siblings.back()->text, text) <= 0)
        return siblings.end();
    return std::upper_bound(siblings.begin(), siblings.end(), text, [](const QString &text, const auto &sibling) {
        return compareText(text, sibling->text) < 0;
    });
}

void KeyedTree::numberRows(const Children &siblings)
{
    for (size_t row = 0; row < siblings.size(); ++row)
        siblings[row]->row = int(row);
}

Qt::ItemFlags KeyedTree::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled : flags;
}

void KeyedTree::forget(const Node *node)
{
    m_byKey.remove(node->key);
    for (const auto &child : node->children)
        forget(child.get());
}
