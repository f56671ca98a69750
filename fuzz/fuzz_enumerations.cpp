// Lists of keys of the three flag enumerations, compared with the plainest way to read and write them. The
// input is a text, and its first four bytes are a value.

#include "LvFuzz.h"
#include "LvGPXFullShape.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackShape.h"

#include <QHash>
#include <QStringList>

#include <cstring>

namespace
{

struct Key {
    const char* text;
    quint32 value;
};

using Keys = QList<Key>;

// The keys are a file format, so they stand here once more.
const Keys trackShapes{{"point", 1},   {"hop", 2},    {"linestring", 4},
                       {"polygon", 8}, {"auto", 256}, {"unknown", 0}};
const Keys markerShapes{{"disk", 1},     {"circle", 2},   {"x", 8},       {"block", 16},
                        {"rect", 32},    {"rhombus", 64}, {"star6", 128}, {"star9", 256},
                        {"star12", 512}, {"arrow", 1024}, {"unknown", 0}};
const Keys displayOptions{{"stroke", 1}, {"fill", 2}};

quint32 plainDecode(const QString& text, const Keys& keys)
{
    quint32 bits = 0;
    const QStringList items = text.split(QLatin1Char(','));
    for (const QString& item : items) {
        for (const Key& key : keys) {
            if (item.trimmed().toLower() == QLatin1String(key.text)) {
                bits |= key.value;
            }
        }
    }
    return bits;
}

QString plainEncode(quint32 bits, const Keys& keys)
{
    QStringList items;
    for (int shift = 0; shift < 31 && static_cast<qint32>(bits) > 0; ++shift) {
        const quint32 flag = 1U << static_cast<unsigned>(shift);
        if ((bits & flag) == 0) {
            continue;
        }
        QString item;
        for (const Key& key : keys) {
            item = key.value == flag ? QString::fromLatin1(key.text) : item;
        }
        items.append(item);
    }
    return items.join(QLatin1String(", "));
}

template <class Wrapper>
void checkKeys(const QString& text, quint32 bits, const Keys& keys)
{
    const auto* table = Wrapper().enumToStringTable();
    const auto value = Wrapper(text).value();
    LvFuzz::expect(static_cast<quint32>(value) == plainDecode(text, keys),
                   "keys are read as the plainest way reads them");
    LvFuzz::expect(table->decodeCSV(table->encodeCSV(value)) == value, "keys give their value back");

    const auto any = Wrapper(bits).value();
    LvFuzz::expect(table->encodeCSV(any) == plainEncode(bits, keys),
                   "flags are written as the plainest way writes them");
    const auto named = static_cast<quint32>(table->decodeCSV(table->encodeCSV(any)));
    LvFuzz::expect((named & ~bits) == 0, "keys add no flag");
    LvFuzz::expect(static_cast<qint32>(bits) > 0 || named == 0, "a value below 1 has no keys");
    LvFuzz::expect(table->encodeCSV(static_cast<decltype(any)>(named)) == plainEncode(named, keys),
                   "what keys have kept they keep for ever");

    const auto single = table->decode(text);
    LvFuzz::expect(!single || table->decode(table->toString(*single)) == single,
                   "a key stands for what it is written as");
}

void checkOperators(quint32 bits, quint32 others)
{
    LvGPXMarkerShape shape(bits);
    const LvGPXMarkerShape other(others);
    LvFuzz::expect((shape < other) == (bits < others) && (shape > other) == (bits > others)
                       && (shape == other) == (bits == others) && shape.isValid() == (bits != 0),
                   "values are compared as numbers");
    LvFuzz::expect(static_cast<quint32>(shape | other) == (bits | others)
                       && static_cast<quint32>(shape & other) == (bits & others)
                       && static_cast<quint32>(shape.reducedTo(other.value())) == (bits & others),
                   "values are combined bit by bit");
    shape |= other;
    LvFuzz::expect(static_cast<quint32>(shape.value()) == (bits | others), "flags are added");
    shape &= other;
    LvFuzz::expect(shape == other, "flags are taken away");
}

void checkFullShape(const LvGPXTrackShape& shape, const LvGPXMarkerShape& marker)
{
    const LvGPXFullShape normal = LvGPXFullShape(shape, marker).normalized();
    LvFuzz::expect(normal.normalized() == normal, "a normal shape stays as it is");
    LvFuzz::expect(
        (static_cast<quint32>(normal.markerShape().value()) & ~static_cast<quint32>(marker.value())) == 0,
        "normalizing adds no marker");
    LvFuzz::expect(normal.describe().isEmpty() == normal.toolTip().isEmpty(),
                   "what has a label has an explanation");
    const QList<LvGPXTrackShape> shapes = shape.possibleShapes();
    for (const LvGPXTrackShape& possible : shapes) {
        LvFuzz::expect(!possible.humanReadable(marker).isEmpty(), "every shape on offer has a label");
    }
    static_cast<void>(shape.createMarkerShapes());
    static_cast<void>(shape.availableDisplayOptions());
}

quint32 bitsAt(const QByteArray& input, qsizetype start)
{
    quint32 bits = 0;
    const QByteArray bytes = input.mid(start, sizeof bits);
    std::memcpy(&bits, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return bits;
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QString text = QString::fromUtf8(input);
    const quint32 bits = bitsAt(input, 0);
    checkKeys<LvGPXTrackShape>(text, bits, trackShapes);
    checkKeys<LvGPXMarkerShape>(text, bits, markerShapes);
    checkKeys<LvGPXTrackDisplayOptions>(text, bits, displayOptions);
    checkOperators(bits, bitsAt(input, sizeof bits));
    checkFullShape(LvGPXTrackShape(bits), LvGPXMarkerShape(bitsAt(input, sizeof bits)));
    checkFullShape(LvGPXTrackShape(text), LvGPXMarkerShape(text));
}
