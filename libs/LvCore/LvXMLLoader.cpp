#include "LvXMLLoader.h"

#include "LvFileHandler.h"

#include <QFileInfo>
#include <QHash>
#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>
#include <utility>

namespace
{

constexpr int longestEntity = 4096; // characters; the limit that the toolkit sets for the tree

QString at(const QString& message, qint64 line, qint64 column)
{
    return QStringLiteral("%1 (line %2, column %3)")
        .arg(message, QString::number(line), QString::number(column));
}

const QString& decoded(const QString& text, const QString& /*declaredEncoding*/)
{
    return text;
}

/// The bytes in the encoding in which the reader takes them.
QString decoded(const QByteArray& bytes, const QString& declaredEncoding)
{
    if (const auto encoding = QStringConverter::encodingForData(bytes, u'<')) {
        return QStringDecoder(*encoding)(bytes);
    }
    QStringDecoder decoder(declaredEncoding.toLatin1().constData());
    return decoder.isValid() ? decoder(bytes) : QString::fromUtf8(bytes);
}

/// Where the next such text ends; the end of the whole text when there is none.
qsizetype behind(QStringView text, QLatin1String end, qsizetype from)
{
    const qsizetype found = text.indexOf(end, from);
    return found < 0 ? text.size() : found + end.size();
}

bool beginsAt(QStringView text, qsizetype index, QLatin1String beginning)
{
    return text.sliced(index).startsWith(beginning);
}

bool isQuote(QChar character)
{
    return character == u'"' || character == u'\'';
}

bool isBlank(QChar character)
{
    return character == u' ' || character == u'\n' || character == u'\r' || character == u'\t';
}

qsizetype behindQuoted(QStringView text, qsizetype quote)
{
    const qsizetype end = text.indexOf(text[quote], quote + 1);
    return end < 0 ? text.size() : end + 1;
}

/// Looks through the text for what costs the toolkit far more than its size, before the toolkit sees it: a
/// few per cent of the time that the tree takes. Ends at the first problem. Where the text is not well-formed
/// the tree ends, so what comes behind need not be understood.
class LvXMLScan
{
public:
    explicit LvXMLScan(QStringView text)
        : myText(text)
    {
        while (myProblem.isEmpty() && skipText()) {
            ++myNodes;
            if (beginsHere(QLatin1String("<!--"))) {
                myIndex = behind(myText, QLatin1String("-->"), myIndex + 4);
            } else if (beginsHere(QLatin1String("<![CDATA["))) {
                myIndex = behind(myText, QLatin1String("]]>"), myIndex);
            } else if (beginsHere(QLatin1String("<?"))) {
                myIndex = behind(myText, QLatin1String("?>"), myIndex);
            } else if (beginsHere(QLatin1String("<!"))) {
                skipDocumentType();
            } else {
                skipTag();
            }
            myDepthSum += myDepth;
            if (myNodes > LvXMLLoader::maximumNodes) {
                myProblem = tooManyNodes();
            } else if (myDepthSum > LvXMLLoader::maximumDepthSum) {
                myProblem = tooManyDeepNodes();
            }
        }
    }

    /// Empty when all is well.
    [[nodiscard]] QString problem() const
    {
        if (myProblem.isEmpty()) {
            return {};
        }
        const QStringView before = myText.first(std::min(myIndex, myText.size()));
        return at(myProblem, before.count(u'\n') + 1, myIndex - before.lastIndexOf(u'\n'));
    }

    [[nodiscard]] bool hasDocumentType() const { return myHasDocumentType; }

    static QString tooManyNodes()
    {
        return QStringLiteral("More than %1 elements, attributes and texts.").arg(LvXMLLoader::maximumNodes);
    }

    static QString tooDeep()
    {
        return QStringLiteral("More than %1 elements inside each other.").arg(LvXMLLoader::maximumDepth);
    }

    static QString tooManyDeepNodes() { return QStringLiteral("Too many elements deep inside each other."); }

    static QString tooMuchExpansion() { return QStringLiteral("Entities expand to too many characters."); }

private:
    [[nodiscard]] bool beginsHere(QLatin1String beginning) const
    {
        return beginsAt(myText, myIndex, beginning);
    }

    /// Goes on to the next "<", false when there is none. Texts of blanks make no node.
    bool skipText()
    {
        while (myIndex < myText.size() && isBlank(myText[myIndex])) {
            ++myIndex;
        }
        if (myIndex < myText.size() && myText[myIndex] != u'<') {
            ++myNodes;
            const qsizetype end = myText.indexOf(u'<', myIndex);
            myIndex = end < 0 ? myText.size() : end;
        }
        return myIndex < myText.size();
    }

    void skipTag()
    {
        const bool isEnd = beginsHere(QLatin1String("</"));
        qsizetype attributes = 0;
        while (myIndex < myText.size() && myText[myIndex] != u'>') {
            if (isQuote(myText[myIndex])) {
                ++attributes;
                myIndex = behindQuoted(myText, myIndex);
            } else {
                ++myIndex;
            }
        }
        const bool isEmpty = myText[myIndex - 1] == u'/';
        ++myIndex;
        if (isEnd) {
            --myNodes; // no node of its own
            --myDepth;
            return;
        }
        myNodes += 2 * attributes; // each with its text
        if (attributes > LvXMLLoader::maximumAttributes) {
            myProblem =
                QStringLiteral("More than %1 attributes in one tag.").arg(LvXMLLoader::maximumAttributes);
        } else if (myDepth + 1 > LvXMLLoader::maximumDepth) {
            myProblem = tooDeep();
        }
        if (!isEmpty) {
            ++myDepth;
        }
    }

    void skipDocumentType()
    {
        myHasDocumentType = true;
        qint64 parameterEntities = 0;
        bool isInside = false;
        while (myIndex < myText.size() && (isInside || myText[myIndex] != u'>')) {
            const QChar character = myText[myIndex];
            if (isQuote(character)) {
                myIndex = behindQuoted(myText, myIndex);
            } else if (beginsHere(QLatin1String("<!--"))) {
                myIndex = behind(myText, QLatin1String("-->"), myIndex + 4);
            } else if (beginsHere(QLatin1String("<?"))) {
                myIndex = behind(myText, QLatin1String("?>"), myIndex);
            } else {
                isInside = character == u'[' || (isInside && character != u']');
                // Also where it only declares one: "<!ENTITY % name". Those are few.
                parameterEntities += character == u'%' ? 1 : 0;
                ++myIndex;
            }
        }
        ++myIndex;
        if (parameterEntities * longestEntity > LvXMLLoader::maximumEntityExpansion) {
            myProblem = tooMuchExpansion();
        }
    }

    QStringView myText;
    qsizetype myIndex = 0;
    QString myProblem;
    qint64 myNodes = 0;
    qint64 myDepthSum = 0;
    int myDepth = 0;
    bool myHasDocumentType = false;
};

/// An upper bound of the characters that the entities declared here add to the document.
qint64 expansionOf(QStringView text, const QXmlStreamReader& reader)
{
    const QXmlStreamEntityDeclarations declarations = reader.entityDeclarations();
    if (declarations.isEmpty()) {
        return 0;
    }
    QHash<QStringView, qint64> lengths;
    for (const QXmlStreamEntityDeclaration& declaration : declarations) {
        const bool hasEntitiesInside = declaration.value().contains(u'&');
        lengths.insert(declaration.name(),
                       hasEntitiesInside ? reader.entityExpansionLimit() : declaration.value().size());
    }
    qint64 characters = 0;
    for (qsizetype start = text.indexOf(u'&'); start >= 0; start = text.indexOf(u'&', start + 1)) {
        qsizetype end = start + 1;
        while (end < text.size() && text[end] != u';' && text[end] != u'&') {
            ++end;
        }
        characters += lengths.value(text.sliced(start + 1, end - start - 1), 0);
    }
    return characters;
}

/// Reads a document with a document type once without building anything: its entities and default attributes
/// may make much of a short text.
class LvXMLExpansionCheck
{
public:
    LvXMLExpansionCheck(QXmlStreamReader& reader, QString text)
        : myReader(reader)
        , myText(std::move(text))
    {
        while (myProblem.isEmpty() && !myReader.atEnd()) {
            checkToken(myReader.readNext());
        }
    }

    /// Empty when all is well, or when the reader has an error, which the tree will have as well.
    [[nodiscard]] QString problem() const
    {
        return myProblem.isEmpty() ? myProblem
                                   : at(myProblem, myReader.lineNumber(), myReader.columnNumber());
    }

private:
    void checkToken(QXmlStreamReader::TokenType token)
    {
        if (token == QXmlStreamReader::StartElement) {
            checkElement();
        } else if (token == QXmlStreamReader::EndElement) {
            --myDepth;
        } else if (token == QXmlStreamReader::DTD) {
            // The reader bounds one entity, not the uses of it, and joins them into one text before it
            // returns: too late to count then.
            countExpansion(expansionOf(myText, myReader));
        } else if (!myReader.isWhitespace()) {
            ++myNodes;
        }
        myDepthSum += myDepth;
        if (myProblem.isEmpty() && myNodes > LvXMLLoader::maximumNodes) {
            myProblem = LvXMLScan::tooManyNodes();
        } else if (myProblem.isEmpty() && myDepthSum > LvXMLLoader::maximumDepthSum) {
            myProblem = LvXMLScan::tooManyDeepNodes();
        }
    }

    void checkElement()
    {
        if (++myDepth > LvXMLLoader::maximumDepth) {
            myProblem = LvXMLScan::tooDeep();
        }
        const QXmlStreamAttributes attributes = myReader.attributes();
        myNodes += 1 + 2 * attributes.size(); // each with its text
        for (const QXmlStreamAttribute& attribute : attributes) {
            if (attribute.isDefault()) {
                countExpansion(attribute.qualifiedName().size() + attribute.value().size());
            }
        }
    }

    void countExpansion(qint64 characters)
    {
        myExpansion += characters;
        if (myProblem.isEmpty() && myExpansion > LvXMLLoader::maximumEntityExpansion) {
            myProblem = LvXMLScan::tooMuchExpansion();
        }
    }

    QXmlStreamReader& myReader;
    QString myText;
    QString myProblem;
    qint64 myExpansion = 0;
    qint64 myNodes = 0;
    qint64 myDepthSum = 0;
    int myDepth = 0;
};

/// Why there must not be a tree of the document; empty when all is well so far.
template <class Source>
QString findProblem(const Source& source)
{
    QXmlStreamReader reader(source);
    reader.setNamespaceProcessing(false); // as for the tree
    reader.setEntityExpansionLimit(longestEntity);
    if (reader.readNext() != QXmlStreamReader::StartDocument) {
        return at(reader.errorString(), reader.lineNumber(), reader.columnNumber());
    }
    const QString text = decoded(source, reader.documentEncoding().toString());
    const LvXMLScan scan(text);
    if (!scan.problem().isEmpty() || !scan.hasDocumentType()) {
        return scan.problem();
    }
    return LvXMLExpansionCheck(reader, text).problem();
}

template <class Source>
bool parseSource(const Source& source, QDomDocument& document, QString* errorMessage)
{
    QString problem = findProblem(source);
    QDomDocument parsed;
    if (problem.isEmpty()) {
        QString message;
        int line = 0;
        int column = 0;
        if (parsed.setContent(source, false, &message, &line, &column)) {
            document = parsed;
            return true;
        }
        problem = at(message, line, column);
    }
    // The tree keeps what stood before an error; nobody shall take it for the document.
    document = QDomDocument();
    if (errorMessage != nullptr) {
        *errorMessage = problem;
    }
    return false;
}

} // namespace

QDomElement LvXMLLoader::loadDocumentElement(const QFileInfo& file)
{
    const std::optional<QByteArray> bytes = LvFileHandler::readBytes(file);
    QDomDocument document;
    return bytes && parse(*bytes, document) ? document.documentElement() : QDomElement();
}

bool LvXMLLoader::parse(const QByteArray& bytes, QDomDocument& document, QString* errorMessage)
{
    return parseSource(bytes, document, errorMessage);
}

bool LvXMLLoader::parse(const QString& text, QDomDocument& document, QString* errorMessage)
{
    return parseSource(text, document, errorMessage);
}
