// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/ResourceIcon.h"

#include <QImageReader>

namespace notch {

QIcon resourceIcon(const QString& name)
{
    QIcon icon;
    for (const auto& file :
        {QStringLiteral(":/notch/%1.png"), QStringLiteral(":/notch/%1@2x.png")}) {
        QImageReader reader(file.arg(name), "png");
        reader.setAutoDetectImageFormat(false); // It would load every picture plug-in there is.
        icon.addPixmap(QPixmap::fromImageReader(&reader));
    }
    return icon;
}

} // namespace notch
