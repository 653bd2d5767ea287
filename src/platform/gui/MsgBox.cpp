#include "platform/gui/MsgBox.h"

#include "platform/gui/HourGlass.h"
#include "platform/gui/WindowOwner.h"
#include "platform/text/Format.h"

#include <QTextDocument>

#include <utility>

namespace {
MsgBoxPresenter presenter;
}

void setMsgBoxPresenter(MsgBoxPresenter replacement) { presenter = std::move(replacement); }

QMessageBox::StandardButton msgBox(const MsgBoxCall &call)
{
    if (presenter)
        return presenter(call);
    // A question asked in the middle of long work wants the ordinary pointer.
    const NormalPointer pointer;
    // A description of 255 characters without a blank is broken into lines as well.
    QMessageBox box(call.icon, call.caption, Format::breakable(call.text), call.buttons, windowOwner());
    // Texts may hold what a user typed; nothing in them is markup.
    box.setTextFormat(Qt::PlainText);
    if (!call.detail.isEmpty())
        box.setInformativeText(Qt::convertFromPlainText(call.detail));
    box.setDefaultButton(call.defaultButton);
    if (call.buttons == (QMessageBox::Yes | QMessageBox::No))
        box.setEscapeButton(QMessageBox::No);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

void inform(const QString &text) { msgBox({.text = text, .icon = QMessageBox::Information}); }

bool confirmed(const QString &question)
{
    return msgBox({.text = question,
                   .icon = QMessageBox::Question,
                   .buttons = QMessageBox::Yes | QMessageBox::No,
                   .defaultButton = QMessageBox::No})
        == QMessageBox::Yes;
}
