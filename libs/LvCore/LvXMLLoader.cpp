#include "LvXMLLoader.h"

#include "LvFileHandler.h"

#include <QFileInfo>
#include <QXmlStreamReader>

#include <optional>

namespace
{

QString at(const QString& message, qint64 line, qint64 column)
{
    return QStringLiteral("%1 (line %2, column %3)")
        .arg(message, QString::number(line), QString::number(column));
}

qint64 charactersOf(const QXmlStreamReader& reader)
{
    qint64 characters = reader.qualifiedName().size() + reader.text().size();
    const QXmlStreamAttributes attributes = reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes) {
        characters += attribute.qualifiedName().size() + attribute.value().size();
    }
    return characters;
}

/// Reads the document once without building anything, about a tenth of the time that the tree takes. Returns
/// why there must not be a tree, an empty text when all is well.
template <class Source>
QString findProblem(const Source& source)
{
    QXmlStreamReader reader(source);
    reader.setNamespaceProcessing(false); // as for the tree
    bool hasEntities = false;
    qint64 characters = 0;
    int depth = 0;
    QString problem;
    while (problem.isEmpty() && !reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::DTD) {
            hasEntities = !reader.entityDeclarations().isEmpty();
        } else if (token == QXmlStreamReader::StartElement && ++depth > LvXMLLoader::maximumDepth) {
            problem =
                QStringLiteral("More than %1 elements inside each other.").arg(LvXMLLoader::maximumDepth);
        } else if (token == QXmlStreamReader::EndElement) {
            --depth;
        }
        // The reader bounds one entity; many uses of one are bounded here. Without entities no text grows.
        characters += hasEntities ? charactersOf(reader) : 0;
        if (characters > source.size() + LvXMLLoader::maximumEntityExpansion) {
            problem = QStringLiteral("Entities expand to too many characters.");
        }
    }
    if (problem.isEmpty() && reader.hasError()) {
        problem = reader.errorString();
    }
    return problem.isEmpty() ? problem : at(problem, reader.lineNumber(), reader.columnNumber());
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
