#include "explorer/View.h"

#include "db/Session.h"
#include "explorer/CheckedOutView.h"
#include "explorer/FolderView.h"
#include "explorer/ScrapView.h"
#include "platform/gui/ChangeBar.h"

bool View::deletedUnderBar(size_t count, const std::function<void(const Progress &)> &deletion)
{
    const QString what = QStringLiteral("Deleting %1 item(s) and all that belongs to them...").arg(count);
    if (ChangeBar::over(Session::database(), what, deletion))
        return true;
    inform("Stopped. Nothing was deleted.");
    return false;
}

const QString View::oneTool = QStringLiteral("You are about to delete the selected tool.\n"
                                             "All checked in and checked out history will also be removed.\n"
                                             "This can not be undone.\n"
                                             " Are you sure you want to continue?");
const QString View::severalThings = QStringLiteral("You are about to delete selected tool(s) on the list.\n"
                                                   "All checked in and checked out history will also be removed.\n"
                                                   "This can not be undone. Are you sure?");

const std::array<const View *, 4> &View::all()
{
    static const FolderView types(FolderView::types), locations(FolderView::locations);
    static const CheckedOutView checkedOut;
    static const ScrapView scrapped;
    static const std::array<const View *, 4> views{&types, &locations, &checkedOut, &scrapped};
    return views;
}

KeyedTree::Node *View::nodeOf(KeyedTree &nodes, const ListItem &folder) const
{
    return nodes.find(idOf(folder).nodeKey());
}

KeyedTree::Node *View::sameNode(KeyedTree &nodes, const Thing &before) const { return nodes.find(before.id.nodeKey()); }

std::optional<MsgBoxCall> View::refusal(Command command, const Things &things) const
{
    for (const RefusalRow &refusal : row.refusals) {
        const auto meant = [&](const Thing &thing) {
            return std::find(refusal.kinds.begin(), refusal.kinds.end(), thing.id.kind) != refusal.kinds.end();
        };
        if (refusal.command == command && (refusal.kinds.empty() || std::any_of(things.begin(), things.end(), meant)))
            return MsgBoxCall{.text = refusal.text, .icon = refusal.icon};
    }
    return {};
}
