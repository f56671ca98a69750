#include "LvGeoPositionSamples.h"

#include <array>

namespace
{

struct Sample {
    LvGeoPositionSamplesEnum value;
    const char* name;
    double latitude;
    double longitude;
};

// The spellings are part of the table, "Greenich" too.
constexpr std::array samples{
    Sample{LvGeoPositionSamplesEnum::Oldenburg, "Oldenburg", 53.14118, 8.21467},
    Sample{LvGeoPositionSamplesEnum::Bremen, "Bremen", 53.0792962, 8.806422},
    Sample{LvGeoPositionSamplesEnum::Wellington, "Wellington", -41.28646, 174.772996908},
    Sample{LvGeoPositionSamplesEnum::Sydney, "Sydney", -33.865143, 151.2099},
    Sample{LvGeoPositionSamplesEnum::NewYork, "New York", 40.73061, -73.935242},
    Sample{LvGeoPositionSamplesEnum::LA, "LA", 34.052235, -118.243683},
    Sample{LvGeoPositionSamplesEnum::Honolulu, "Honolulu", 21.315603, -157.858093},
    Sample{LvGeoPositionSamplesEnum::Polynesien, "Polynesien", -17.679742, -149.3729275},
    Sample{LvGeoPositionSamplesEnum::Greenich, "Greenich", 51.507351, 0.0},
    Sample{LvGeoPositionSamplesEnum::Windhoek, "Windhoek", -22.5631, 17.0786},
    Sample{LvGeoPositionSamplesEnum::Helsinki, "Helsinki", 60.169471, 24.929667},
    Sample{LvGeoPositionSamplesEnum::Gibraltar, "Gibraltar", 36.140751, -5.353585},
    Sample{LvGeoPositionSamplesEnum::Passau, "Passau", 48.5667364, 13.4319466},
};

} // namespace

LvGeoPositionSamples::LvGeoPositionSamples()
{
    myPositions.reserve(static_cast<qsizetype>(samples.size()));
    for (const Sample& sample : samples) {
        myPositions.insert(sample.value, LvGeoPosition(sample.latitude, sample.longitude));
    }
}

LvGeoPositionSamples::LvGeoPositionSamples(const LvGeoPositionSamples& other) = default;

LvGeoPositionSamples::LvGeoPositionSamples(LvGeoPositionSamples&& other) noexcept = default;

LvGeoPositionSamples& LvGeoPositionSamples::operator=(const LvGeoPositionSamples& other) = default;

LvGeoPositionSamples& LvGeoPositionSamples::operator=(LvGeoPositionSamples&& other) noexcept = default;

LvGeoPositionSamples::~LvGeoPositionSamples() = default;

QString LvGeoPositionSamples::name(LvGeoPositionSamplesEnum sample)
{
    for (const Sample& candidate : samples) {
        if (candidate.value == sample) {
            return QString::fromLatin1(candidate.name);
        }
    }
    return {};
}

LvGeoPosition LvGeoPositionSamples::position(LvGeoPositionSamplesEnum sample) const
{
    return myPositions.value(sample);
}

LvLatitude LvGeoPositionSamples::latitude(LvGeoPositionSamplesEnum sample) const
{
    return position(sample).latitude();
}

LvLongitude LvGeoPositionSamples::longitude(LvGeoPositionSamplesEnum sample) const
{
    return position(sample).longitude();
}
