#pragma once

#include "LvGeoPosition.h"

#include <QString>

/**
 * Reads a position from a text as people and programs write it. Thread-safe.
 *
 * Understood are decimal degrees, degrees with minutes, and degrees with minutes and seconds; with or without
 * signs for the units; with hemisphere letters or words (German or English) before or behind the numbers, or
 * with plus and minus; with a decimal point or a decimal comma; everything the library writes; "geo:"
 * addresses, and the addresses that map pages put into the address bar of a browser. Without a hemisphere
 * latitude comes first. "O" is Ost: east.
 *
 * What can be read in two ways is refused, never guessed.
 */
namespace LvCoordinateText
{

/// The position in the text; the invalid default position when there is none, more than one way to read it,
/// or an angle out of its range. A position at 0°/0° is invalid like everywhere.
LvGeoPosition parse(const QString& text);

} // namespace LvCoordinateText
