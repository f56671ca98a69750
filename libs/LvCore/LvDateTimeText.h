#pragma once

#include "lvcore_export.h"

#include <QDateTime>
#include <QStringView>

#include <string_view>

/**
 * Reads date-times from texts as QDateTime does, with the usual form of track files many times faster.
 * Without state, usable from any thread.
 */
class LVCORE_EXPORT LvDateTimeText
{
public:
    LvDateTimeText() = delete;

    /// The same as QDateTime::fromString(text.trimmed(), Qt::ISODate): invalid when the text is none.
    [[nodiscard]] static QDateTime fromIso(QStringView text);

    /// The same from bytes in UTF-8.
    [[nodiscard]] static QDateTime fromIso(std::string_view text);
};
