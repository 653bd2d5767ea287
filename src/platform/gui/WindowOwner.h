#pragma once

class QWidget;

/// The window that a dialog or a message box opened now belongs to, so that it stands over it: the modal one, the
/// active one, else the program's main window; null before there is any.
QWidget *windowOwner();
