#pragma once

#include <QMessageBox>

#include <functional>

/// One message box as the user sees it.
struct MsgBoxCall {
    QString text = {};
    QString caption = QStringLiteral("System Message");
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    QString detail = {}; ///< below the text: what exactly was at fault, or what to do instead
};

/// Shows the box over the active window and returns the button pressed; closing it counts as its Cancel, No or only
/// button. Every message of the program goes through here.
QMessageBox::StandardButton msgBox(const MsgBoxCall &call);

/// The usual remark: information icon, OK.
void inform(const QString &text);

/// The usual question: whether it was answered with Yes. Enter, and closing it, answer No.
bool confirmed(const QString &question);

using MsgBoxPresenter = std::function<QMessageBox::StandardButton(const MsgBoxCall &)>;
/// Replaces what puts boxes on the screen; an empty function brings the real boxes back.
void setMsgBoxPresenter(MsgBoxPresenter presenter);
