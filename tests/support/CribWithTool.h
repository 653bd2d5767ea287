#pragma once

#include "common/ItemId.h"
#include "common/ProgramState.h"
#include "platform/system/Clock.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ModelTexts.h"
#include "tests/support/ScriptedUser.h"

/// A crib with tool 1, a torque wrench in Cabinet A, which the explorer lists as selected; below it stands "r2", a
/// screwdriver that is only listed. The suite is installed, and it is 13:05:09 on the 4th of March 2026.
class CribWithTool : public CribDatabase
{
public:
    CribWithTool()
    {
        insert("Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)",
               {"2,1,'Acme','TW-40','Torque wrench',129.5,0"});
        const QStringList subItems{"TW-40", "..\\Torque wrenches", "..\\Cabinet A", "Acme", ""};
        explorer.items = {{"r1", "Torque wrench", ItemIcon::toolInStock, subItems},
                          {"r2", "Screwdriver", ItemIcon::toolInStock}};
        explorer.selected = 0;
        ProgramState::SuiteInstalled = true;
        Clock::setSource([] { return QDateTime({2026, 3, 4}, {13, 5, 9}); });
    }
    ~CribWithTool() { Clock::setSource({}); }

    void lendTo(const QString &employee, const QString &jobOrOH = "1250", int lineItemType = 4)
    {
        run({"Update Tools set out=-1"});
        insert("CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,Active)",
               {QStringLiteral("1,'%1',%2,%3,-1").arg(employee, jobOrOH).arg(lineItemType)});
        explorer.items[0].key = "co1";
        explorer.items[0].icon = ItemIcon::toolOut;
        explorer.items[0].setSubItem(5, employee);
    }
    /// Chooses in a dialog who is charged.
    template<typename Form>
    static void choose(Form &form, const QString &employee, const QString &jobType, const QString &job)
    {
        form.ui.dbcEmp->setText(employee);
        form.ui.dbcJobType->setText(jobType);
        form.ui.dbcJob->setText(job);
    }
    /// The first item as it is listed: key, icon, text and columns.
    QString listed() const
    {
        const ListItem &item = explorer.items[0];
        return (QStringList{item.key, QString::number(item.icon), item.text} + item.subItems).join('|');
    }

    FakeExplorer explorer;
};
