#pragma once

#include "platform/gui/KeyedList.h"
#include "platform/gui/KeyedTree.h"

/// How the items of the tool list show what they are.
namespace ItemIcon {
enum Number { toolOut = 1, folder = 3, openFolder = 4, toolInStock = 6, toolScrapped = 7 };
}

/// What a node of the explorer's tree or an item of its list stands for. The keys under which tree and list keep them
/// are made from it here and read back here.
struct ItemId {
    enum Kind {
        root,
        folder, ///< a tool type or a location
        description, ///< the tools out that are called alike; the number is only a position
        chargeKind, ///< jobs or overhead operations, LineItemType.Index
        charge, ///< a job or an overhead operation that tools were scrapped for
        toolInStock,
        toolOut,
        scrapRecord,
    };

    Kind kind = root;
    qint64 number = 0;

    bool operator==(const ItemId &) const = default;
    bool isTool() const { return kind == toolInStock || kind == toolOut; }
    QString digits() const { return QString::number(number); }
    /// The number of a tool. @throws NumberError above 32767: loans carry tool numbers in 16 bits.
    qint16 toolNumber() const;

    /// The tree's key: "x0", "l12", "C1250".
    QString nodeKey() const;
    /// The list's key: "r12", "co12", "j16384", "s4"; of a folder "l12", or "t12" in the view by type.
    QString itemKey(const char *folderPrefix = "l") const;
    /// `below` is what a key with "l" means in this tree: a folder, a description or a kind of charge.
    static ItemId of(const KeyedTree::Node &node, Kind below);
    /// `folders` is what a key with "l" means in this list: a folder, or in the scrap view a charge.
    static ItemId of(const ListItem &item, Kind folders = folder);
};
