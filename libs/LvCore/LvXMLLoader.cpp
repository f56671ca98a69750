#include "LvXMLLoader.h"

#include "LvFileHandler.h"

#include <QFileInfo>
#include <QHash>
#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>

namespace
{

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

qsizetype behindQuoted(QStringView text, qsizetype quote)
{
    const qsizetype end = text.indexOf(text[quote], quote + 1);
    return end < 0 ? text.size() : end + 1;
}

/// Looks through the text for what costs the reader far more than its size, before the reader sees it.
/// Where the text is not well-formed the reader stops, so what comes behind need not be understood.
class LvXMLTraps
{
public:
    explicit LvXMLTraps(QStringView text)
        : myText(text)
    {
        qsizetype index = myText.indexOf(u'<');
        while (index >= 0 && index < myText.size()) {
            if (beginsAt(myText, index, QLatin1String("<!--"))) {
                index = behind(myText, QLatin1String("-->"), index + 4);
            } else if (beginsAt(myText, index, QLatin1String("<![CDATA["))) {
                index = behind(myText, QLatin1String("]]>"), index);
            } else if (beginsAt(myText, index, QLatin1String("<?"))) {
                index = behind(myText, QLatin1String("?>"), index);
            } else if (beginsAt(myText, index, QLatin1String("<!"))) {
                index = behindDocumentType(index);
            } else {
                index = behindTag(index);
            }
            index = myText.indexOf(u'<', index);
        }
    }

    /// The largest number of attributes in one tag. The reader compares each with each.
    [[nodiscard]] qsizetype mostAttributes() const { return myMostAttributes; }

    /// The number of uses of parameter entities: each may put another 4096 characters into the document type.
    [[nodiscard]] qint64 parameterEntities() const { return myParameterEntities; }

    [[nodiscard]] bool hasDocumentType() const { return myHasDocumentType; }

private:
    qsizetype behindTag(qsizetype index)
    {
        qsizetype attributes = 0;
        while (index < myText.size() && myText[index] != u'>') {
            if (isQuote(myText[index])) {
                ++attributes;
                index = behindQuoted(myText, index);
            } else {
                ++index;
            }
        }
        myMostAttributes = std::max(myMostAttributes, attributes);
        return index;
    }

    qsizetype behindDocumentType(qsizetype index)
    {
        myHasDocumentType = true;
        bool isInside = false;
        while (index < myText.size() && (isInside || myText[index] != u'>')) {
            const QChar character = myText[index];
            if (isQuote(character)) {
                index = behindQuoted(myText, index);
            } else if (beginsAt(myText, index, QLatin1String("<!--"))) {
                index = behind(myText, QLatin1String("-->"), index + 4);
            } else if (beginsAt(myText, index, QLatin1String("<?"))) {
                index = behind(myText, QLatin1String("?>"), index);
            } else {
                isInside = character == u'[' || (isInside && character != u']');
                // Also where it only declares one: "<!ENTITY % name". Those are few.
                myParameterEntities += character == u'%' ? 1 : 0;
                ++index;
            }
        }
        return index;
    }

    QStringView myText;
    qsizetype myMostAttributes = 0;
    qint64 myParameterEntities = 0;
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

/// Reads the document once without building anything, about a tenth of the time that the tree takes, and
/// tells why there must not be a tree.
class LvXMLCheck
{
public:
    template <class Source>
    explicit LvXMLCheck(const Source& source)
        : myReader(source)
    {
        myReader.setNamespaceProcessing(false); // as for the tree
        if (myReader.readNext() == QXmlStreamReader::StartDocument) {
            checkText(decoded(source, myReader.documentEncoding().toString()));
        }
        while (myProblem.isEmpty() && !myReader.atEnd()) {
            checkToken(myReader.readNext());
        }
        if (myProblem.isEmpty() && myReader.hasError()) {
            myProblem = myReader.errorString();
        }
    }

    /// Empty when all is well.
    [[nodiscard]] QString problem() const
    {
        return myProblem.isEmpty() ? myProblem
                                   : at(myProblem, myReader.lineNumber(), myReader.columnNumber());
    }

private:
    void checkText(const QString& text)
    {
        const LvXMLTraps traps(text);
        if (traps.mostAttributes() > LvXMLLoader::maximumAttributes) {
            myProblem =
                QStringLiteral("More than %1 attributes in one tag.").arg(LvXMLLoader::maximumAttributes);
        }
        countExpansion(traps.parameterEntities() * myReader.entityExpansionLimit());
        if (traps.hasDocumentType()) {
            myText = text; // needed once more when the entities are known
        }
    }

    void checkToken(QXmlStreamReader::TokenType token)
    {
        ++myNodes;
        if (token == QXmlStreamReader::StartElement) {
            checkElement();
        } else if (token == QXmlStreamReader::EndElement) {
            --myDepth;
            --myNodes; // no node of its own
        } else if (token == QXmlStreamReader::DTD) {
            // The reader bounds one entity, not the uses of it, and joins them into one text before it
            // returns: too late to count then.
            countExpansion(expansionOf(myText, myReader));
            myText.clear();
        }
        if (myProblem.isEmpty() && myNodes > LvXMLLoader::maximumNodes) {
            myProblem =
                QStringLiteral("More than %1 elements, attributes and texts.").arg(LvXMLLoader::maximumNodes);
        }
    }

    void checkElement()
    {
        if (++myDepth > LvXMLLoader::maximumDepth) {
            myProblem =
                QStringLiteral("More than %1 elements inside each other.").arg(LvXMLLoader::maximumDepth);
        }
        const QXmlStreamAttributes attributes = myReader.attributes();
        myNodes += 2 * attributes.size(); // each with its text
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
            myProblem = QStringLiteral("Entities expand to too many characters.");
        }
    }

    QXmlStreamReader myReader;
    QString myText;
    QString myProblem;
    qint64 myExpansion = 0;
    qint64 myNodes = 0;
    int myDepth = 0;
};

template <class Source>
bool parseSource(const Source& source, QDomDocument& document, QString* errorMessage)
{
    QString problem = LvXMLCheck(source).problem();
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
