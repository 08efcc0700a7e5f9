#pragma once

#include <QLatin1String>
#include <QString>

// On a button a single "&" marks a shortcut, which would press the button. A name keeps its own; the caption
// has each of them doubled, which shows it as it was typed.

inline QString captionOfName(QString name)
{
    return name.replace(QLatin1String("&"), QLatin1String("&&"));
}

inline QString nameOfCaption(QString caption)
{
    return caption.replace(QLatin1String("&&"), QLatin1String("&"));
}
