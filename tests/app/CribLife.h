#pragma once

#include "explorer/clsTools.h"
#include "tests/support/CribExplorer.h"
#include "transactions/ScrapPurge.h"
#include "transactions/frmCheckIn.h"
#include "transactions/frmCheckOut.h"
#include "transactions/frmScrap.h"
#include "transactions/frmScrapRestore.h"

#include <random>

/// Does what attendants do all day, through the windows that they use, as a generator of random numbers decides. The
/// same seed gives the same day.
class CribLife : private ExplorerUser
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
        case lend:
            if (!goToTool(false, 0))
                return false;
            choosePerson(frmCheckOut::instance().ui);
            frmCheckOut::instance().ui.cmdOK->click();
            frmCheckOut::unload();
            return true;
        case take:
            if (!goToTool(true, 1))
                return false;
            frmCheckIn::instance().ui.cmdOk->click();
            frmCheckIn::unload();
            return true;
        case scrap: {
            const bool out = pick(2);
            if (!goToTool(out, 0))
                return false;
            const auto &ui = frmScrap::instance().ui;
            if (!out)
                choosePerson(ui);
            ui.dbcScrapReason->setText(pick(3) ? "Broken" : "lost");
            ui.cmdOK->click();
            frmScrap::unload();
            return true;
        }
        case restore:
            if (!goToItem("Select ID,JobOrOH from Scrap", 3, "C", "j"))
                return false;
            frmScrapRestore::instance().ui.cmdRestore->click();
            frmScrapRestore::unload();
            return true;
        case purge: { // now and then, or nothing is left in the end
            const QStringList record = pick(4) ? QStringList() : anyRow("Select ID from Scrap");
            return !record.isEmpty() && MainSubs::PurgeScrapped("Tool", record[0].toInt());
        }
        case move:
            if (!goToTool(false, 1))
                return false;
            tree()->setDropHighlight(node("l" + anyRow("Select ID from Locations")[0]));
            list()->DragArmed = true;
            emit tree()->itemsDropped();
            return true;
        case rename:
            execute(
                QStringLiteral("UPDATE types SET  description='Type %1' WHERE id=%2").arg(m_random()).arg(pick(3) + 1));
            return true;
        case remove: {
            const QStringList tool = pick(16) ? QStringList() : anyRow("Select ID from Tools where out=0");
            return !tool.isEmpty() && clsTools().Delete(clsTools::Kind::types, {}, {tool[0].toInt()}).isEmpty();
        }
        case operations:
            break;
        }
        return false;
    }

private:
    int pick(int count) { return int(m_random() % unsigned(count)); }

    /// The fields of a random row; nothing where there is none.
    QStringList anyRow(const QString &statement)
    {
        const Recordset rows = openRecordset(statement);
        QStringList fields;
        const int row = rows.isEmpty() ? 0 : pick(rows.recordCount());
        for (int column = 0; !rows.isEmpty() && column < rows.fieldCount(); ++column)
            fields.append(rows.at(row, column).toText());
        return fields;
    }

    bool goToTool(bool out, int option)
    {
        const QString statement = "Select ID,%1 from Tools where out=%2";
        return goToItem(statement.arg(option ? "Location" : "Type").arg(-out), option, "l", out ? "co" : "r");
    }

    /// Selects the list item of a random row of `statement`, whose first field is its number, the second its node's.
    bool goToItem(const QString &statement, int option, const QString &nodePrefix, const QString &itemPrefix)
    {
        const QStringList found = anyRow(statement);
        if (found.isEmpty())
            return false;
        view(option);
        explorer().rebuildView();
        tree()->expandAll();
        if (!node(nodePrefix + found[1]))
            return false;
        go(nodePrefix + found[1]);
        if (!explorer().selectItem(itemPrefix + found[0]))
            return false;
        if (others)
            others();
        return true;
    }

    template<typename Ui>
    void choosePerson(const Ui &ui)
    {
        for (BoundCombo *box : {ui.dbcEmp, ui.dbcJobType, ui.dbcJob})
            box->setCurrentIndex(pick(box->count()));
    }

    std::mt19937 m_random;
};
