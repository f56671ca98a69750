#include "LvKmlCoordinates.h"

#include <QStringConverter>

#include <algorithm>
#include <array>
#include <optional>

namespace
{

constexpr std::string_view coordinatesTag = "<coordinates>";
constexpr std::string_view coordinatesEndTag = "</coordinates>";

// Below other elements a reader may want the text of them with everything inside.
constexpr std::array<std::string_view, 10> geometryTags = {
    "Document",   "Folder",     "Placemark", "MultiGeometry",   "Point",
    "LineString", "LinearRing", "Polygon",   "outerBoundaryIs", "innerBoundaryIs",
};

constexpr std::string_view blanks = " \t\n\r";

std::string_view viewOf(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

bool isUtf8(const QByteArray& document)
{
    return QStringConverter::encodingForData(document).value_or(QStringConverter::Utf8)
        == QStringConverter::Utf8;
}

/// Whether the text between two tags means itself: legal in XML, no reference, no part of "]]>".
bool isPlain(std::string_view text)
{
    const auto isOdd = [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return (code < ' ' && code != '\t' && code != '\n' && code != '\r') || code > '~' || byte == '&'
            || byte == '>';
    };
    // Blocks of a fixed size without a way out become vector code.
    constexpr std::size_t blockSize = 64;
    std::size_t index = 0;
    for (; index + blockSize <= text.size(); index += blockSize) {
        unsigned char odd = 0;
        for (std::size_t offset = 0; offset < blockSize; ++offset) {
            odd |= static_cast<unsigned char>(isOdd(text[index + offset]));
        }
        if (odd != 0) {
            return false;
        }
    }
    return std::none_of(text.begin() + static_cast<std::ptrdiff_t>(index), text.end(), isOdd);
}

/// Goes through the markup from tag to tag.
class Scanner
{
public:
    explicit Scanner(std::string_view document)
        : myDocument(document)
    {
    }

    [[nodiscard]] const QList<std::string_view>& texts() const { return myTexts; }

    /// False where the document cannot be taken apart.
    bool scan()
    {
        bool isFine = true;
        for (myIndex = myDocument.find('<'); isFine && myIndex < myDocument.size();
             myIndex = isFine ? myDocument.find('<', myIndex) : myIndex) {
            if (startsWith("<!--")) {
                isFine = skipBehind("-->", 4);
            } else if (startsWith("<![CDATA[")) {
                isFine = skipBehind("]]>", 0);
            } else if (startsWith("<?")) {
                isFine = skipBehind("?>", 0);
            } else if (startsWith("<!")) {
                isFine = false; // a document type may define anything
            } else if (startsWith("</")) {
                --myDepth;
                if (myDepth == myForeignDepth) {
                    myForeignDepth = noDepth;
                }
                isFine = skipBehind(">", 0);
            } else {
                isFine = readStartTag();
            }
        }
        return isFine;
    }

private:
    [[nodiscard]] bool startsWith(std::string_view beginning) const
    {
        return myDocument.substr(myIndex, beginning.size()) == beginning;
    }

    bool skipBehind(std::string_view end, std::size_t offset)
    {
        const std::size_t found = myDocument.find(end, myIndex + offset);
        myIndex = found + end.size();
        return found != std::string_view::npos;
    }

    bool readStartTag()
    {
        const std::size_t nameEnd = myDocument.find_first_of(" \t\n\r/>", myIndex);
        if (nameEnd == std::string_view::npos) {
            return false;
        }
        const std::string_view name = myDocument.substr(myIndex + 1, nameEnd - myIndex - 1);
        if (name == "coordinates") {
            return startsWith(coordinatesTag) && myForeignDepth == noDepth && takeText();
        }
        std::size_t end = nameEnd;
        while (end < myDocument.size() && myDocument[end] != '>') {
            const char character = myDocument[end];
            if (character == '"' || character == '\'') {
                end = myDocument.find(character, end + 1);
                if (end == std::string_view::npos) {
                    return false;
                }
            }
            ++end;
        }
        if (end == myDocument.size()) {
            return false;
        }
        myIndex = end + 1;
        if (myDocument[end - 1] != '/') {
            const bool isRoot = myDepth == 0;
            if (myForeignDepth == noDepth && !isRoot
                && std::find(geometryTags.begin(), geometryTags.end(), name) == geometryTags.end()) {
                myForeignDepth = myDepth;
            }
            ++myDepth;
        }
        return true;
    }

    bool takeText()
    {
        const std::size_t begin = myIndex + coordinatesTag.size();
        myIndex = myDocument.find('<', begin);
        if (myIndex == std::string_view::npos || !startsWith(coordinatesEndTag)) {
            return false;
        }
        const std::string_view text = myDocument.substr(begin, myIndex - begin);
        myIndex += coordinatesEndTag.size();
        if (text.find_first_not_of(blanks) != std::string_view::npos) {
            myTexts.append(text);
            return isPlain(text);
        }
        return true;
    }

    static constexpr qint64 noDepth = -1;

    std::string_view myDocument;
    std::size_t myIndex = 0;
    qint64 myDepth = 0;
    qint64 myForeignDepth = noDepth; // of the outermost element around that is none of the geometry
    QList<std::string_view> myTexts;
};

} // namespace

LvKmlCoordinates::LvKmlCoordinates(const QByteArray& document)
    : myDocument(document)
{
    const std::string_view whole = viewOf(myDocument);
    Scanner scanner(whole);
    if (!isUtf8(myDocument) || !scanner.scan()) {
        return;
    }
    myIsValid = true;
    myTexts = scanner.texts();
    const char* copied = whole.data();
    qsizetype index = 0;
    for (const std::string_view text : std::as_const(myTexts)) {
        myRemainder.append(copied, text.data() - copied);
        myRemainder.append(QByteArray::number(index++));
        copied = text.data() + text.size();
    }
    myRemainder.append(copied, whole.data() + whole.size() - copied);
}

std::string_view LvKmlCoordinates::find(const QString& index) const
{
    bool isNumber = false;
    const qsizetype number = index.toLongLong(&isNumber);
    return isNumber && number >= 0 && number < myTexts.size() ? myTexts.at(number) : std::string_view();
}
