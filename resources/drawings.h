// SPDX-License-Identifier: MIT
#ifndef RESOURCES_DRAWINGS_H
#define RESOURCES_DRAWINGS_H

#include <QImage>
#include <QVector>

class QPainter;

/// A picture of the resources as it is drawn.
struct Drawing {
    const char *file; ///< Its name, without folder.
    int size;         ///< Width and height in pixels.
    bool has_sign;    ///< Whether it is a filled shape with a white sign on it; else it is an outline.
    /// Draws it into a square of 64 units, which is transparent.
    void (*draw)(QPainter &painter);
};

/// Every drawing there is.
QVector<Drawing> allDrawings();

/// The drawing as an image with transparency. Text is nowhere used, so that no font and no display is needed.
QImage renderDrawing(const Drawing &drawing);

/// The four icons of message boxes. Each has a shape of its own, so that they are told apart without colour.
void drawQuestionIcon(QPainter &painter);
void drawInformationIcon(QPainter &painter);
void drawWarningIcon(QPainter &painter);
void drawCriticalIcon(QPainter &painter);

/// The magnifying glass of search fields.
void drawSearchIcon(QPainter &painter);

#endif
