#pragma once

/// The places of LvGeoPositionSamples. Other values of the underlying type are legal and stand for no place.
enum class LvGeoPositionSamplesEnum : int {
    Oldenburg = 0,
    Bremen = 1,
    Wellington = 2,
    Sydney = 3,
    NewYork = 4,
    LA = 5,
    Honolulu = 6,
    Polynesien = 7,
    Greenich = 8,
    Windhoek = 9,
    Helsinki = 10,
    Gibraltar = 11,
    Passau = 12
};
