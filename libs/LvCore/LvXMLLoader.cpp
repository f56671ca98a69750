#include "LvXMLLoader.h"

#include "LvFileHandler.h"

#include <QFileInfo>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>

namespace
{

/// Reads the document once without building anything. An empty text means that its depth is harmless; errors
/// in the document itself are left to the second reading, which reports them.
template <class Source>
QString depthProblem(const Source& source)
{
    // No tag, no depth: most documents are too small to be worth the first reading.
    if (std::count(source.cbegin(), source.cend(), '<') <= LvXMLLoader::maximumDepth
        && std::find(source.cbegin(), source.cend(), '&') == source.cend()) {
        return {};
    }
    QXmlStreamReader reader(source);
    reader.setNamespaceProcessing(false);
    int depth = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++depth > LvXMLLoader::maximumDepth) {
                return QStringLiteral("nested deeper than %1 elements in line %2")
                    .arg(QString::number(LvXMLLoader::maximumDepth), QString::number(reader.lineNumber()));
            }
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
    return {};
}

template <class Source>
bool parseSource(const Source& source, QDomDocument& document, QString* errorMessage)
{
    QString message = depthProblem(source);
    int line = 0;
    int column = 0;
    QDomDocument parsed;
    if (message.isEmpty()) {
        if (parsed.setContent(source, false, &message, &line, &column)) {
            document = parsed;
            return true;
        }
        message +=
            QStringLiteral(" (line %1, column %2)").arg(QString::number(line), QString::number(column));
    }
    // The tree keeps what stood before the error; nobody shall take it for the document.
    document = QDomDocument();
    if (errorMessage != nullptr) {
        *errorMessage = message;
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
