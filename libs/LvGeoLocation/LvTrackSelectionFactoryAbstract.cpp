#include "LvTrackSelectionFactoryAbstract.h"

LvTrackSelectionFactoryAbstract::LvTrackSelectionFactoryAbstract() = default;
LvTrackSelectionFactoryAbstract::~LvTrackSelectionFactoryAbstract() = default;
