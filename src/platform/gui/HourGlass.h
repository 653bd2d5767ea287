#pragma once

#include <QtGlobal>

/// Hourglass pointer for the life of the object, on every way out of a handler.
class HourGlass
{
public:
    HourGlass();
    ~HourGlass();
    Q_DISABLE_COPY_MOVE(HourGlass)
};

/// The ordinary pointer for the life of the object, for a question in the midst of long work; the hourglasses come back
/// after it.
class NormalPointer
{
public:
    NormalPointer();
    ~NormalPointer();
    Q_DISABLE_COPY_MOVE(NormalPointer)

private:
    int m_hidden = 0;
};
