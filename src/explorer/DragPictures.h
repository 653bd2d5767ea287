#pragma once

class QDrag;

/// Gives a drag its two pictures: "DragDrop" where it may be dropped, "OffLimit" elsewhere.
void setDragPictures(QDrag &drag);
