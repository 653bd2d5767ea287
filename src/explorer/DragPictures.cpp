#include "explorer/DragPictures.h"

#include "platform/gui/Icons.h"

#include <QDrag>

namespace {
constexpr int side = 32;
}

void setDragPictures(QDrag &drag)
{
    drag.setDragCursor(Icons::icon("drag-drop").pixmap(side), Qt::MoveAction);
    drag.setDragCursor(Icons::icon("off-limit").pixmap(side), Qt::IgnoreAction);
}
