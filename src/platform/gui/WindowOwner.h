#pragma once

class QDialog;
class QWidget;

/// The window that a dialog or a message box opened now belongs to, so that it stands over it: the modal one, the
/// active one, the one that execOver() gave the keyboard back to, else the program's main window; null before there is
/// any.
QWidget *windowOwner();

/// Runs the dialog. The window that it belongs to has the keyboard again afterwards, also when a message box closed a
/// moment before the dialog: window systems lose track of two that close at once. @returns what QDialog::exec() gives.
int execOver(QDialog &dialog);
