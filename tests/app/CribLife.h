#pragma once

#include "catalogue/FolderEditor.h"
#include "common/ProgramState.h"
#include "db/Session.h"
#include "explorer/clsTools.h"
#include "explorer/frmTree.h"
#include "transactions/ScrapPurge.h"
#include "transactions/frmCheckIn.h"
#include "transactions/frmCheckOut.h"
#include "transactions/frmScrap.h"
#include "transactions/frmScrapRestore.h"

#include <random>

/// Does what attendants do all day, through the windows that they use, as a generator of random numbers decides. The
/// same seed gives the same day.
class CribLife
{
public:
    explicit CribLife(unsigned seed) : m_random(seed) { }

    /// What happens at other desks before the selected tool is acted on.
    std::function<void()> others;

    enum Operation { lend, take, scrap, restore, purge, move, rename, remove, operations };

    /// One operation on whatever suits it. @returns false when nothing did.
    bool doSomething() { return act(Operation(pick(operations))); }

    bool act(Operation operation)
    {
        switch (operation) {
        case lend: {
            if (!goToItem("Select ID,Type from Tools where out=0", 0, "l", "r"))
                return false;
            frmCheckOut &form = frmCheckOut::instance();
            choosePerson(form.ui.dbcEmp, form.ui.dbcJobType, form.ui.dbcJob);
            form.ui.cmdOK->click();
            frmCheckOut::unload();
            return true;
        }
        case take: {
            if (!goToItem("Select ID,Location from Tools where out=-1", 1, "l", "co"))
                return false;
            frmCheckIn::instance().ui.cmdOk->click();
            frmCheckIn::unload();
            return true;
        }
        case scrap: {
            const bool out = pick(2);
            if (!goToItem(out ? "Select ID,Type from Tools where out=-1" : "Select ID,Type from Tools where out=0", 0,
                          "l", out ? "co" : "r"))
                return false;
            frmScrap &form = frmScrap::instance();
            if (!out)
                choosePerson(form.ui.dbcEmp, form.ui.dbcJobType, form.ui.dbcJob);
            form.ui.dbcScrapReason->setText(pick(3) ? "Broken" : "lost");
            form.ui.cmdOK->click();
            frmScrap::unload();
            return true;
        }
        case restore: {
            if (!goToItem("Select ID,JobOrOH from Scrap", 3, "C", "j"))
                return false;
            frmScrapRestore::instance().ui.cmdRestore->click();
            frmScrapRestore::unload();
            return true;
        }
        case purge: {
            if (pick(4) > 0) // or nothing is left in the end
                return false;
            const Recordset rows = openRecordset("Select ID from Scrap");
            if (rows.isEmpty())
                return false;
            return MainSubs::PurgeScrapped("Tool", qint32(rows.at(pick(rows.recordCount()), 0).toInteger()));
        }
        case move: {
            if (!goToItem("Select ID,Location from Tools where out=0", 1, "l", "r"))
                return false;
            const Recordset targets = openRecordset("Select ID from Locations");
            TreePane *tree = explorer().ui.tvMain;
            tree->setDropHighlight(tree->nodes().find("l" + targets.at(pick(targets.recordCount()), 0).toText()));
            explorer().ui.lstToolList->DragArmed = true;
            emit tree->itemsDropped();
            return true;
        }
        case rename:
            execute(
                QStringLiteral("UPDATE types SET  description='Type %1' WHERE id=%2").arg(m_random()).arg(pick(3) + 1));
            return true;
        case remove: {
            if (pick(8) > 0)
                return false;
            const Recordset tools = openRecordset("Select ID from Tools where out=0");
            if (tools.recordCount() < 20)
                return false;
            return clsTools()
                .Delete(clsTools::Kind::types, {}, {qint32(tools.at(pick(tools.recordCount()), 0).toInteger())})
                .isEmpty();
        }
        case operations:
            break;
        }
        return false;
    }

private:
    int pick(int count) { return int(m_random() % unsigned(count)); }
    frmTree &explorer() { return frmTree::instance(); }

    void show(int option)
    {
        auto *button = explorer().findChild<QRadioButton *>(QStringLiteral("optMode%1").arg(option));
        if (button->isChecked())
            explorer().rebuildView();
        else
            button->click();
        explorer().ui.tvMain->expandAll();
    }

    /// Selects the list item of a random row of `statement`, whose first field is its number, the second its node's.
    bool goToItem(const QString &statement, int option, const QString &node, const QString &prefix)
    {
        const Recordset rows = openRecordset(statement);
        if (rows.isEmpty())
            return false;
        const int row = pick(rows.recordCount());
        show(option);
        TreePane *tree = explorer().ui.tvMain;
        KeyedTree::Node *found = tree->nodes().find(node + rows.at(row, 1).toText());
        if (!found)
            return false;
        tree->selectNode(found);
        emit tree->nodeClicked(found);
        if (!explorer().selectItem(prefix + rows.at(row, 0).toText()))
            return false;
        if (others)
            others();
        return true;
    }

    void choosePerson(BoundCombo *dbcEmp, BoundCombo *dbcJobType, BoundCombo *dbcJob)
    {
        choose(dbcEmp, pick(dbcEmp->count()));
        choose(dbcJobType, pick(dbcJobType->count()));
        choose(dbcJob, pick(dbcJob->count()));
    }

    static void choose(BoundCombo *box, int row) { box->setCurrentIndex(row); }

    std::mt19937 m_random;
};
