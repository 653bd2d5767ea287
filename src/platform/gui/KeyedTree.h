#pragma once

#include "platform/gui/FillableModel.h"

#include <QAbstractItemModel>
#include <QIcon>

#include <memory>
#include <stdexcept>
#include <vector>

/// A key that stands in the tree already, or a parent that does not.
class KeyError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A tree of nodes, each with a key that is unique over the tree, a text and a picture. It is the model of its view.
class KeyedTree : public FillableModel<QAbstractItemModel>
{
    Q_OBJECT
public:
    struct Node {
        QString key;
        QString text;
        QIcon icon;
        Node *parent = nullptr;
        bool sorted = false; ///< children stand in the order of their texts
        int row = 0;
        std::vector<std::unique_ptr<Node>> children = {};
    };

    using FillableModel::FillableModel;

    void clear();
    /// Adds a node as the last child of `parent`, or where its text belongs when the parent is sorted; without a
    /// parent it is the root. @throws KeyError when the key is taken, or when there is a root already.
    Node *add(Node *parent, const QString &key, const QString &text, const QIcon &icon);
    void removeChildren(Node *node);
    /// Takes the node with all below it out of the tree.
    void remove(Node *node);
    /// Hangs the node with all below it under `parent`, which is not below it, where its text belongs.
    void move(Node *node, Node *parent);
    /// The node goes where its new text belongs when its parent is sorted.
    void setText(Node *node, const QString &text);

    Node *root() const { return m_root.get(); }
    /// Null when no node has that key.
    Node *find(const QString &key) const { return m_byKey.value(key); }
    /// Null for an invalid index, as is the index of no node.
    Node *nodeAt(const QModelIndex &index) const;
    QModelIndex indexOf(const Node *node) const;
    /// The texts from the root down to the node, separated by "\".
    static QString fullPath(const Node *node);
    /// Whether `node` is `ancestor` or lies below it.
    static bool isWithin(const Node *node, const Node *ancestor);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    using Children = std::vector<std::unique_ptr<Node>>;
    static Children::iterator placeFor(Children &siblings, const QString &text);
    static void numberRows(const Children &siblings);
    void forget(const Node *node);

    std::unique_ptr<Node> m_root;
    QHash<QString, Node *> m_byKey;
};
