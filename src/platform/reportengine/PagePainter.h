#pragma once

#include "platform/reportengine/Page.h"

class QPainter;
class TextMeasure;

/// Draws a page's elements. The painter's unit is the twip: whoever calls has scaled it to its device.
void paintElements(QPainter &painter, const QList<PageElement> &elements, TextMeasure &measure);
