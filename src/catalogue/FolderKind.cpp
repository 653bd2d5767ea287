#include "catalogue/FolderKind.h"

#include "catalogue/SpareFolderList.h"
#include "db/Session.h"

constinit const FolderKind FolderKind::location = {
    .mode = "location",
    .editor = "frmLocationNewEdit",
    .newCaption = "New Tool Location in ",
    .editCaption = "Edit Tool Location",
    .frame = "Enter the Location Description",
    .textBox = "txtLocation",
    .numberMessage = "You may not use a number for a Location!",
    .duplicateMessage = "Locations may not be duplicated.",
    .noMoreMessage = "No more Locations can be added: their numbers end at 32767.",
    .goneMessage = "The Location was deleted meanwhile.",
    .descriptionOf = "SELECT Description FROM Locations WHERE ID = ",
    .countNamed = "SELECT Count(*) as cnt FROM locations WHERE description=",
    .idNamed = "Select ID from Locations where description = ",
    .insert = "INSERT INTO locations (description, parent) VALUES(",
    .rename = "UPDATE locations SET  description=",
    .list = "frmLocation",
    .listCaption = "Tool Locations",
    .listStatement = "Select * from Locations order by description",
    .inUseMessage = "There are tools in the selected Location, it cannot be deleted!",
    .otherErrorMessage = "An unknown error ocurred when trying to save the new Location!:  ",
    .listOpen = SpareFolderList::LocationListOpen,
};

constinit const FolderKind FolderKind::type = {
    .mode = "type",
    .editor = "frmTypeNewEdit",
    .newCaption = "New Tool Type in ",
    .editCaption = "Edit Tool Type",
    .frame = "Enter the Type Description",
    .textBox = "txtType",
    .numberMessage = "You may not use a number for a Type!",
    .duplicateMessage = "Types may not be duplicated.",
    .noMoreMessage = "No more Types can be added: their numbers end at 32767.",
    .goneMessage = "The Type was deleted meanwhile.",
    .descriptionOf = "SELECT Description FROM Types WHERE ID = ",
    .countNamed = "SELECT Count(*) as cnt FROM types WHERE description=",
    .idNamed = "Select ID from Types where description = ",
    .insert = "INSERT INTO types (description, parent) VALUES(",
    .rename = "UPDATE types SET  description=",
    .list = "frmType",
    .listCaption = "Tool Types (Groups)",
    .listStatement = "Select * from types order by description",
    .inUseMessage = "There are tools in the selected Type (Group), it cannot be deleted!",
    .otherErrorMessage = "An unknown error ocurred when trying to save the new Type!:  ",
    .listOpen = SpareFolderList::TypeListOpen,
};

QString FolderKind::description(int id) const
{
    return openRecordset(descriptionOf + QString::number(id)).text(u"Description");
}

bool FolderKind::exists(int id) const { return !openRecordset(descriptionOf + QString::number(id)).isEmpty(); }
