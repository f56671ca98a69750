#include "LvXMLLoader.h"

#include "LvFileHandler.h"

#include <QFileInfo>
#include <QHash>
#include <QStringDecoder>
#include <QXmlStreamReader>

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

/// An upper bound of the characters that the entities declared here add to the document.
qint64 expansionOf(const QString& text, const QXmlStreamReader& reader)
{
    const QXmlStreamEntityDeclarations declarations = reader.entityDeclarations();
    QHash<QStringView, qint64> lengths;
    for (const QXmlStreamEntityDeclaration& declaration : declarations) {
        const bool hasEntitiesInside = declaration.value().contains(u'&');
        lengths.insert(declaration.name(),
                       hasEntitiesInside ? reader.entityExpansionLimit() : declaration.value().size());
    }
    qint64 characters = 0;
    const QStringView view = text;
    for (qsizetype start = view.indexOf(u'&'); start >= 0; start = view.indexOf(u'&', start + 1)) {
        qsizetype end = start + 1;
        while (end < view.size() && view[end] != u';' && view[end] != u'&') {
            ++end;
        }
        characters += lengths.value(view.sliced(start + 1, end - start - 1), 0);
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
    int depth = 0;
    QString declaredEncoding;
    QString problem;
    while (problem.isEmpty() && !reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartDocument) {
            declaredEncoding = reader.documentEncoding().toString(); // later tokens do not tell it any more
        } else if (token == QXmlStreamReader::StartElement && ++depth > LvXMLLoader::maximumDepth) {
            problem =
                QStringLiteral("More than %1 elements inside each other.").arg(LvXMLLoader::maximumDepth);
        } else if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::DTD
                   && !reader.entityDeclarations().isEmpty()
                   // The reader bounds one entity, not the uses of it, and joins them into one text before it
                   // returns: too late to count then.
                   && expansionOf(decoded(source, declaredEncoding), reader)
                       > LvXMLLoader::maximumEntityExpansion) {
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
