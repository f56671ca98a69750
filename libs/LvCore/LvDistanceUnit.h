#pragma once

/// What the number of an LvDistance counts. It only labels texts; no distance is ever converted.
enum class LvDistanceUnit : int { None = 0, Pixel = 1, Metre = 2, Kilometre = 3 };
