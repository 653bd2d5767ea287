#pragma once

class QAbstractItemView;
class QFocusEvent;
class QRect;
class QString;

/// What tree and list have in common on the screen.
namespace PaneLook {

/// The selection of the pane that commands act on has the desktop's colour, that of the other one is grey.
void setInCharge(QAbstractItemView &view, bool inCharge);
/// The focus came by a key, a click or a command, not back from a menu, a dialog or another window.
bool isUsersChoice(const QFocusEvent &focus);
/// Writes into a pane that has nothing to show what to do first.
void paintHint(QAbstractItemView &view, const QRect &place, const QString &hint);

}
