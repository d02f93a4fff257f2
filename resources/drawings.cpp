// SPDX-License-Identifier: MIT
#include "resources/drawings.h"

#include <QPainter>

QVector<Drawing> allDrawings()
{
    return {
        {"tavierror_question.png", 64, true, drawQuestionIcon},
        {"tavierror_information.png", 64, true, drawInformationIcon},
        {"tavierror_warning.png", 64, true, drawWarningIcon},
        {"tavierror_critical.png", 64, true, drawCriticalIcon},
        {"search.png", 20, false, drawSearchIcon},
        {"search@2x.png", 40, false, drawSearchIcon},
    };
}

QImage renderDrawing(const Drawing &drawing)
{
    QImage image(drawing.size, drawing.size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(drawing.size / 64.0, drawing.size / 64.0);
    drawing.draw(painter);
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}
