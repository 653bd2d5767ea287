#pragma once

#include "platform/gui/KeyedList.h"

class Panes;
class Recordset;

/// Rows of statements as the items that lists and hits show.
namespace ListItems {

/// The picture of an item, and the state that it shows.
ItemPicture picture(int number);

/// The mark of a folder elsewhere in the tree, before its name.
QString elsewhere(const QString &folder);
/// "LastName, FirstName"; ", " when the employee is gone.
QString personName(const Recordset &row);

ListItem folder(const QString &key, const QString &text);

/// Tools can be flagged as out without a loan that says who has them, after another program was cut off half-way or an
/// employee was deleted. Adds those that meet `condition` and are not listed, so that they can be taken back.
void addOutWithoutLoan(Panes &panes, const QString &condition, ListItem (*itemOf)(const Recordset &row));

}
