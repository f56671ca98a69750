#pragma once

#include <QString>

/// Texts that come with maps.
namespace LvMapText
{

/// The attribution of a map as one line of plain text: map files often hold it as HTML with links. Longer
/// texts than could stand on a picture are cut.
QString plainAttribution(const QString& attribution);

} // namespace LvMapText
