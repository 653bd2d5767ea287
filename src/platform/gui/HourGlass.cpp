#include "platform/gui/HourGlass.h"

#include <QApplication>

HourGlass::HourGlass() { QApplication::setOverrideCursor(Qt::WaitCursor); }

HourGlass::~HourGlass() { QApplication::restoreOverrideCursor(); }

NormalPointer::NormalPointer()
{
    for (; QApplication::overrideCursor(); ++m_hidden)
        QApplication::restoreOverrideCursor();
}

NormalPointer::~NormalPointer()
{
    while (m_hidden-- > 0)
        QApplication::setOverrideCursor(Qt::WaitCursor);
}
