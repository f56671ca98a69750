// How libFuzzer changes inputs that hold XML. Changed byte by byte, nearly every document would be broken,
// and only the parser would be tested; here most changes leave it well-formed.

#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QByteArray>
#include <QDomDocument>
#include <QDomElement>
#include <QList>
#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t size, std::size_t maximumSize);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size, std::size_t maximumSize,
                                               unsigned int seed);

namespace
{

constexpr int mostChanges = 4;
constexpr qsizetype longestText = 512;

constexpr std::array tagNames = {"trk",
                                 "rte",
                                 "trkseg",
                                 "trkpt",
                                 "rtept",
                                 "compressedPoints",
                                 "enclaves",
                                 "include",
                                 "name",
                                 "desc",
                                 "shape",
                                 "ele",
                                 "time",
                                 "extensions",
                                 "gpxx:RoutePointExtension",
                                 "gpxx:rpt",
                                 "Document",
                                 "Folder",
                                 "Placemark",
                                 "description",
                                 "styleUrl",
                                 "Style",
                                 "LineStyle",
                                 "PolyStyle",
                                 "color",
                                 "width",
                                 "LineString",
                                 "Polygon",
                                 "Point",
                                 "coordinates",
                                 "gpxtrack",
                                 "configuredTrack",
                                 "locationTrack",
                                 "pensize",
                                 "fillcolor",
                                 "halosize",
                                 "displayOptions",
                                 "markerShape",
                                 "trackShape",
                                 "penStyle",
                                 "includedTrack",
                                 "file",
                                 "selection"};

constexpr std::array attributeNames = {
    "lat",  "lon",  "id",      "smoothing", "smoothingSteps", "croppingOpacity",
    "name", "kind", "visible", "version"};

constexpr std::array words = {"nan",
                              "inf",
                              "-inf",
                              "1e300",
                              "-1e300",
                              "1e-300",
                              "1e12",
                              "1e9",
                              "100000",
                              "0",
                              "-0",
                              "1",
                              "-1",
                              "2.5",
                              "7",
                              "50",
                              "90",
                              "-90",
                              "89.9999999",
                              "180",
                              "-180",
                              "179.9999999",
                              "360",
                              "-360",
                              "720",
                              "2147483647",
                              "-2147483648",
                              "2147483648",
                              "9223372036854775807",
                              "point",
                              "linestring",
                              "polygon",
                              "hop",
                              "auto",
                              "unknown",
                              "stroke",
                              "fill",
                              "stroke,fill",
                              "disk",
                              "arrow",
                              "star12",
                              "x",
                              "rect",
                              "star9,arrow",
                              "#80ff0000",
                              "00ffffff",
                              "#a",
                              "2023-05-01T10:00:00Z",
                              "1,2 3,4 1,2",
                              "179,1 -179,2",
                              "nan,1 1,nan",
                              "0,90 0,-90",
                              "8,53,12,1700000000000",
                              "8,53 9,54 10,53.5",
                              "1e300,1 -1e300,-1",
                              ""};

class LvXmlMutator
{
public:
    explicit LvXmlMutator(unsigned int seed)
        : myRandom(seed)
    {
    }

    [[nodiscard]] std::size_t below(std::size_t count)
    {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(myRandom);
    }

    [[nodiscard]] QByteArray mutated(QDomDocument& document)
    {
        for (std::size_t change = 0, count = 1 + below(mostChanges); change < count; ++change) {
            mutate(document);
        }
        return LvXMLBuilder::legalText(document.toString(-1)).toUtf8();
    }

private:
    template <class List>
    auto any(const List& list)
    {
        return list[static_cast<typename List::size_type>(below(static_cast<std::size_t>(list.size())))];
    }

    QString anyWord() { return QString::fromLatin1(any(words)); }

    QString anyTag() { return QString::fromLatin1(any(tagNames)); }

    QDomElement anyElement(const QDomDocument& document)
    {
        QList<QDomElement> elements{document.documentElement()};
        for (qsizetype index = 0; index < elements.size(); ++index) {
            for (QDomElement child = QDomElement(elements.at(index)).firstChildElement(); !child.isNull();
                 child = child.nextSiblingElement()) {
                elements.append(child);
            }
        }
        return any(elements);
    }

    void mutate(QDomDocument& document)
    {
        QDomElement element = anyElement(document);
        const bool isRoot = element == document.documentElement();
        switch (below(9)) {
        case 0:
            if (!isRoot) {
                element.parentNode().insertAfter(element.cloneNode(), element);
            }
            break;
        case 1:
            if (!isRoot) {
                element.parentNode().removeChild(element);
            }
            break;
        case 2:
            anyElement(document).appendChild(element.cloneNode());
            break;
        case 3:
            if (!isRoot) {
                element.setTagName(anyTag());
            }
            break;
        case 4: {
            QDomElement child = document.createElement(anyTag());
            child.appendChild(document.createTextNode(anyWord()));
            element.appendChild(child);
            break;
        }
        case 5:
            element.setAttribute(QString::fromLatin1(any(attributeNames)), anyWord());
            break;
        case 6:
            mutateAttribute(element);
            break;
        default:
            mutateText(document, element);
            break;
        }
    }

    void mutateAttribute(QDomElement& element)
    {
        const QDomNamedNodeMap attributes = element.attributes();
        if (!attributes.isEmpty()) {
            QDomAttr attribute =
                attributes.item(static_cast<int>(below(static_cast<std::size_t>(attributes.size()))))
                    .toAttr();
            attribute.setValue(mutated(attribute.value()));
        }
    }

    void mutateText(QDomDocument& document, QDomElement& element)
    {
        QDomText text = element.firstChild().toText();
        if (!text.isNull()) {
            text.setData(mutated(text.data()));
        } else if (element.firstChildElement().isNull()) {
            element.appendChild(document.createTextNode(anyWord()));
        }
    }

    QString mutated(const QString& text)
    {
        static const QRegularExpression myNumber(QStringLiteral("[-+.eE0-9]+"));
        if (below(2) == 0) {
            QList<QRegularExpressionMatch> numbers;
            for (const QRegularExpressionMatch& match : myNumber.globalMatch(text)) {
                numbers.append(match);
            }
            if (!numbers.isEmpty()) {
                const QRegularExpressionMatch number = any(numbers);
                return QString(text).replace(number.capturedStart(), number.capturedLength(), anyWord());
            }
        }
        const QByteArray old = text.toUtf8();
        const qsizetype room = std::max(longestText, old.size());
        QByteArray bytes = old;
        bytes.resize(room);
        const std::size_t size =
            LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(bytes.data()),
                             static_cast<std::size_t>(old.size()), static_cast<std::size_t>(room));
        return LvXMLBuilder::legalText(QString::fromUtf8(bytes.first(static_cast<qsizetype>(size))));
    }

    std::minstd_rand myRandom;
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size, std::size_t maximumSize,
                                               unsigned int seed)
{
    LvXmlMutator mutator(seed);
    const QByteArray input(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    // What stands before the document is the set-up line of a picture.
    const qsizetype start = std::max<qsizetype>(0, input.indexOf('<'));
    QDomDocument document;
    if (mutator.below(8) == 0 || !LvXMLLoader::parse(input.sliced(start), document)) {
        return LLVMFuzzerMutate(bytes, size, maximumSize);
    }
    QByteArray head = input.first(start);
    if (start > 0 && mutator.below(3) == 0) {
        const qsizetype room = start + 16;
        head.resize(room);
        head.truncate(static_cast<qsizetype>(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(head.data()),
                                                              static_cast<std::size_t>(start),
                                                              static_cast<std::size_t>(room))));
        head.replace('\n', ' ').append('\n');
    }
    const QByteArray output = head + mutator.mutated(document);
    if (output.size() > static_cast<qsizetype>(maximumSize)) {
        return LLVMFuzzerMutate(bytes, size, maximumSize);
    }
    std::copy(output.begin(), output.end(), bytes);
    return static_cast<std::size_t>(output.size());
}
