#pragma once

#include "common/ExplorerWindow.h"

#include <QList>

/// An explorer without a window: a list with one selected row, and what dialogs asked it to do.
class FakeExplorer : public ExplorerWindow
{
public:
    FakeExplorer() { setTheExplorer(this); }
    ~FakeExplorer() override { setTheExplorer(nullptr); }

    QString TreeMode() const override { return mode; }
    const ListItem *selectedItem() const override
    {
        return selected >= 0 && selected < items.size() ? &items[selected] : nullptr;
    }
    void patchSelectedItem(const ListItem &item) override { items[selected] = item; }
    void removeSelectedItem() override
    {
        items.removeAt(selected);
        selected = qMin(selected, int(items.size()) - 1);
    }
    void narrowSelection() override { } // it has one selected row at most
    int itemCount() const override { return int(items.size()); }
    void selectFirstItem() override { selected = 0; }
    void focusList() override { calls.append("focus list"); }
    void listSelectedNode() override { calls.append("list node"); }
    void rebuildView() override { calls.append("rebuild view"); }
    void addChildNode(const QString &tree, int parentId, int id, const QString &text) override
    {
        calls.append(QStringLiteral("add %1 %2 under %3: %4").arg(tree).arg(id).arg(parentId).arg(text));
    }
    void renameNode(const QString &tree, int id, const QString &text) override
    {
        calls.append(QStringLiteral("rename %1 %2: %3").arg(tree).arg(id).arg(text));
    }
    std::optional<PickedFolder> pickFolder(const QString &kind, QWidget *) override
    {
        calls.append("pick " + kind);
        return picked;
    }

    QString mode = "type";
    QList<ListItem> items;
    int selected = -1;
    std::optional<PickedFolder> picked;
    QStringList calls;
};
