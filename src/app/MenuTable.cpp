#include "app/MenuTable.h"

#include "app/mdiMain.h"
#include "explorer/frmTree.h"
#include "platform/gui/MsgBox.h"
#include "transactions/MainSubs.h"

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
             {"mnuFileTools", "&Tools", [] { frmTree::instance().Startup(false); }},
             {"mnuFileExit", "&Exit", [] { mdiMain::instance().close(); }},
         }},
        {"mnuTables",
         "&Tables",
         shown,
         {
             {"mnuScrapReasons", "&Scrap Reasons"},
         }},
        {"mnuReports",
         "&Reports",
         shown,
         {
             {"mnuReportOut", "Tools &Out"},
             {"mnuAllTools", "&All Tools"},
             {"mnuJunk", "&Junk Tools"},
             {"mnuHyphen1"},
             {"mnuConfigure", "&Configure Reports"},
         }},
        {"mnuWindow", "&Window", shown, {}},
        {"mnuTreePopType",
         "TreePopType",
         hidden,
         {
             {"mnuAddToolType", "Add Type", raiseTreeNewType},
             {"mnuNewToolinType", "Add Tool to Type", raiseTreeNewTool},
             {"mnuHyphen2"},
             {"mnuEditToolType", "Edit Type"},
             {"mnuHyphen3"},
             {"mnuDeleteToolType", "Delete Type"},
         }},
        {"mnuTreePopLoc",
         "TreePopLoc",
         hidden,
         {
             {"mnuAddLocation", "Add Location", raiseTreeNewLocation},
             {"mnuAddToolinLocation", "Add Tool to Location", raiseTreeNewTool},
             {"mnuHyphen4"},
             {"mnuEditLocation", "Edit Location"},
             {"mnuHyphen5"},
             {"mnuDeleteLocation", "Delete Location"},
         }},
        {"mnuTreePopTool",
         "TreePopTool",
         hidden,
         {
             {"mnuCheckOut", "Check Out Tool", MainSubs::CheckOutSelectedTool},
             {"mnuCheckIn", "Check In Tool", MainSubs::CheckInSelectedTool},
             {"mnuScrapTool", "Scrap Tool"},
             {"mnuHyphen6"},
             {"mnuAddTool", "New Tool", raiseTreeNewTool},
             {"mnuEditTool", "Edit Tool"},
             {"mnuDeleteTool", "Delete Tool"},
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
             {"mnuTreeEditTool", "Edit Tool"},
             {"mnuTreeEditType", "Edit Type"},
             {"mnuTreeEditLocation", "Edit Location"},
         }},
        {"mnuListPopScrap",
         "ListPopScrap",
         hidden,
         {
             {"mnuRestore", "Restore"},
             {"mnuDelete", "Delete"},
         }},
        {"mnuTreePopScrap",
         "TreePopScrap",
         hidden,
         {
             {"mnuDeleteScrapType", "Delete Scrap Type"},
         }},
        {"mnuListCheckIn",
         "ListPopCheckIn",
         hidden,
         {
             {"mnuCheckInTool", "Check In", MainSubs::CheckInSelectedTool},
             {"mnuScrap", "Scrap"},
         }},
    };
}
