#include "app/MenuTable.h"

#include "app/mdiMain.h"
#include "catalogue/frmScrapReasons.h"
#include "explorer/frmTree.h"
#include "queries/QueryForm.h"
#include "queries/QueryKind.h"
#include "reports/frmConfigReports.h"
#include "transactions/ToolCommands.h"
#include "transactions/frmScrap.h"

namespace {

void raiseTreeNewTool() { emit mdiMain::instance().TreeNewTool(); }
void raiseTreeNewType() { emit mdiMain::instance().TreeNewType(); }
void raiseTreeNewLocation() { emit mdiMain::instance().TreeNewLocation(); }

}

std::vector<MenuRow> menuTable()
{
    constexpr bool shown = false, hidden = true;
    return {
        {"mnuFile",
         "&File",
         shown,
         {
             {"mnuFileTools", "&Tools", [] { mdiMain::instance().showTools(); }},
             {"mnuFileExit", "&Exit", [] { mdiMain::instance().close(); }},
         }},
        {"mnuTables",
         "&Tables",
         shown,
         {
             {"mnuScrapReasons", "&Scrap Reasons", [] { frmScrapReasons::showModal(); }},
         }},
        {"mnuReports",
         "&Reports",
         shown,
         {
             {"mnuReportOut", "Tools &Out"},
             {"mnuAllTools", "&All Tools", [] { QueryForm::showModal(QueryKind::frmReportAllTools); }},
             {"mnuJunk", "&Junk Tools", [] { QueryForm::showModal(QueryKind::frmReportJunkTools); }},
             {"mnuHyphen1"},
             {"mnuConfigure", "&Configure Reports", [] { frmConfigReports::showModal(); }},
         }},
        {"mnuWindow", "&Window", shown, {}},
        {"mnuTreePopType",
         "TreePopType",
         hidden,
         {
             {"mnuAddToolType", "Add Type", raiseTreeNewType},
             {"mnuNewToolinType", "Add Tool to Type", raiseTreeNewTool},
             {"mnuHyphen2"},
             {"mnuEditToolType", "Edit Type", [] { frmTree::instance().cmdEdit_Click(); }},
             {"mnuHyphen3"},
             {"mnuDeleteToolType", "Delete Type", [] { frmTree::instance().cmdDelete_Click(); }},
         }},
        {"mnuTreePopLoc",
         "TreePopLoc",
         hidden,
         {
             {"mnuAddLocation", "Add Location", raiseTreeNewLocation},
             {"mnuAddToolinLocation", "Add Tool to Location", raiseTreeNewTool},
             {"mnuHyphen4"},
             {"mnuEditLocation", "Edit Location", [] { frmTree::instance().cmdEdit_Click(); }},
             {"mnuHyphen5"},
             {"mnuDeleteLocation", "Delete Location", [] { frmTree::instance().cmdDelete_Click(); }},
         }},
        {"mnuTreePopTool",
         "TreePopTool",
         hidden,
         {
             {"mnuCheckOut", "Check Out Tool", MainSubs::CheckOutSelectedTool},
             {"mnuCheckIn", "Check In Tool", MainSubs::CheckInSelectedTool},
             {"mnuScrapTool", "Scrap Tool", [] { frmScrap::showModal(); }},
             {"mnuHyphen6"},
             {"mnuAddTool", "New Tool", raiseTreeNewTool},
             {"mnuEditTool", "Edit Tool", [] { frmTree::instance().TreeEditTool(); }},
             {"mnuDeleteTool", "Delete Tool", [] { frmTree::instance().TreeDeleteItems(); }},
         }},
        {"mnuTreeNew",
         "TreeNew",
         hidden,
         {
             {"mnuTreeNewTool", "New Tool", raiseTreeNewTool},
             {"mnuTreeNewType", "New Type", raiseTreeNewType},
             {"mnuTreeNewLocation", "New Location", raiseTreeNewLocation},
         }},
        {"mnuTreeEdit",
         "TreeEdit",
         hidden,
         {
             {"mnuTreeEditTool", "Edit Tool", [] { frmTree::instance().TreeEditTool(); }},
             {"mnuTreeEditType", "Edit Type", [] { frmTree::instance().cmdEdit_Click(); }},
             {"mnuTreeEditLocation", "Edit Location", [] { frmTree::instance().cmdEdit_Click(); }},
         }},
        {"mnuListPopScrap",
         "ListPopScrap",
         hidden,
         {
             {"mnuRestore", "Restore", MainSubs::RestoreSelectedScrap},
             {"mnuDelete", "Delete", [] { frmTree::instance().cmdDelete_Click(); }},
         }},
        {"mnuTreePopScrap",
         "TreePopScrap",
         hidden,
         {
             {"mnuDeleteScrapType", "Delete Scrap Type", [] { frmTree::instance().cmdDelete_Click(); }},
         }},
        {"mnuListCheckIn",
         "ListPopCheckIn",
         hidden,
         {
             {"mnuCheckInTool", "Check In", MainSubs::CheckInSelectedTool},
             {"mnuScrap", "Scrap", [] { frmTree::instance().cmdScrapTool_Click(); }},
         }},
    };
}
