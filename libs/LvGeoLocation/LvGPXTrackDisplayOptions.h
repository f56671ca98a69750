#pragma once

#include "LvEnumWrapper.h"
#include "LvGPXTrackDisplayOptionsEnum.h"
#include "lvgeolocation_export.h"

#include <QString>

class QDomElement;

extern template class LvEnumWrapper<LvGPXTrackDisplayOptionsEnum>;

/// Which parts of a track are drawn: its outline ("stroke"), its area ("fill"), both, or nothing.
class LVGEOLOCATION_EXPORT LvGPXTrackDisplayOptions : public LvEnumWrapper<LvGPXTrackDisplayOptionsEnum>
{
public:
    LvGPXTrackDisplayOptions();
    // NOLINTNEXTLINE(google-explicit-constructor) a value and its wrapper are the same thing
    LvGPXTrackDisplayOptions(LvGPXTrackDisplayOptionsEnum value);
    explicit LvGPXTrackDisplayOptions(int value);
    explicit LvGPXTrackDisplayOptions(quint32 value);
    /// From key strings separated by commas; what is no key contributes no flag.
    explicit LvGPXTrackDisplayOptions(const QString& keys);
    LvGPXTrackDisplayOptions(const LvGPXTrackDisplayOptions& other);
    LvGPXTrackDisplayOptions(LvGPXTrackDisplayOptions&& other) noexcept;
    LvGPXTrackDisplayOptions& operator=(const LvGPXTrackDisplayOptions& other);
    LvGPXTrackDisplayOptions& operator=(LvGPXTrackDisplayOptions&& other) noexcept;
    ~LvGPXTrackDisplayOptions() override;

    /// Reads the child "displayOptions". A missing child means "stroke", an empty one that nothing is drawn.
    static LvGPXTrackDisplayOptions fromXml(const QDomElement& parent);

    void fillTable(LvEnumToStringTable<LvGPXTrackDisplayOptionsEnum>* table) const override;

    /// Appends the child "displayOptions" with the key strings.
    void toXml(QDomElement& parent) const;
};
