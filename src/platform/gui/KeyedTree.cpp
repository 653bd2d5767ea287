#include "platform/gui/KeyedTree.h"

#include "platform/text/TextCompare.h"

#include <algorithm>

KeyedTree::Filling::Filling(KeyedTree &tree) : m_tree(tree)
{
    if (m_tree.m_filling++ == 0)
        m_tree.beginResetModel();
}

KeyedTree::Filling::~Filling()
{
    if (--m_tree.m_filling == 0)
        m_tree.endResetModel();
}

void KeyedTree::clear()
{
    const Filling filling(*this);
    m_byKey.clear();
    m_root.reset();
}

KeyedTree::Node *KeyedTree::add(Node *parent, const QString &key, const QString &text, const QIcon &icon)
{
    if (m_byKey.contains(key))
        throw KeyError();
    auto made = std::make_unique<Node>(Node{ .key = key, .text = text, .icon = icon, .parent = parent });
    Node *node = made.get();
    if (!parent) {
        const Filling filling(*this);
        m_root = std::move(made);
        m_byKey.insert(key, node);
        return node;
    }
    auto &siblings = parent->children;
    auto place = siblings.end();
    if (parent->sorted)
        place = std::upper_bound(siblings.begin(), siblings.end(), made,
                                 [](const auto &a, const auto &b) { return compareText(a->text, b->text) < 0; });
    node->row = int(place - siblings.begin());
    if (m_filling == 0)
        beginInsertRows(indexOf(parent), node->row, node->row);
    place = siblings.insert(place, std::move(made));
    while (++place != siblings.end())
        ++(*place)->row;
    m_byKey.insert(key, node);
    if (m_filling == 0)
        endInsertRows();
    return node;
}

void KeyedTree::removeChildren(Node *node)
{
    if (node->children.empty())
        return;
    if (m_filling == 0)
        beginRemoveRows(indexOf(node), 0, int(node->children.size()) - 1);
    for (const auto &child : node->children)
        forget(child.get());
    node->children.clear();
    if (m_filling == 0)
        endRemoveRows();
}

void KeyedTree::setText(Node *node, const QString &text)
{
    node->text = text;
    const QModelIndex index = indexOf(node);
    emit dataChanged(index, index);
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
    if (parent.isValid())
        return int(nodeAt(parent)->children.size());
    return m_root ? 1 : 0;
}

int KeyedTree::columnCount(const QModelIndex &) const { return 1; }

QVariant KeyedTree::data(const QModelIndex &index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return nodeAt(index)->text;
    case Qt::DecorationRole:
        return nodeAt(index)->icon;
    default:
        return {};
    }
}

void KeyedTree::forget(const Node *node)
{
    m_byKey.remove(node->key);
    for (const auto &child : node->children)
        forget(child.get());
}
