// SPDX-License-Identifier: MIT
#pragma once

class QPainter;
class QRect;

/// Paints the front of a panel: a grey metal face, a dark screen unless `screen` is empty, and shadows at the
/// edges. Rectangles are in the painter's pixels.
void paintPanelFace(QPainter &painter, const QRect &face, const QRect &screen);
