#include "LvXMLBuilder.h"

#include <QCoreApplication>
#include <QSaveFile>
#include <QTextStream>

#include <algorithm>

namespace
{

constexpr int indentation = 1;

/// The number of code units of the legal character that starts at the index: 1, 2 for a surrogate pair, 0 for
/// none.
qsizetype legalUnits(QStringView text, qsizetype index)
{
    const char16_t unit = text[index].unicode();
    if (QChar::isHighSurrogate(unit)) {
        return index + 1 < text.size() && text[index + 1].isLowSurrogate() ? 2 : 0;
    }
    const bool isLegal = unit >= u' ' ? !QChar::isLowSurrogate(unit) && unit < 0xFFFE
                                      : unit == u'\t' || unit == u'\n' || unit == u'\r';
    return isLegal ? 1 : 0;
}

bool isDeclaration(const QDomNode& node)
{
    return node.isProcessingInstruction() && node.nodeName() == QLatin1String("xml");
}

bool refuse(const QString& reason, const QFileInfo& file, QStringList* errorHistory)
{
    if (errorHistory != nullptr) {
        errorHistory->append(
            QCoreApplication::translate("LvXMLBuilder", "Die Datei „%1“ konnte nicht geschrieben werden: %2")
                .arg(file.filePath(), reason));
    }
    return false;
}

/// Whether elements lie deeper inside each other than the toolkit can write: it goes down by recursion.
bool isTooDeep(const QDomDocument& document)
{
    int depth = 1;
    QDomElement element = document.documentElement();
    while (!element.isNull() && depth <= LvXMLBuilder::maximumDepth) {
        QDomElement next = element.firstChildElement();
        depth += next.isNull() ? 0 : 1;
        while (next.isNull() && !element.isNull()) {
            next = element.nextSiblingElement();
            if (next.isNull()) {
                element = element.parentNode().toElement();
                --depth;
            }
        }
        element = next;
    }
    return !element.isNull();
}

QByteArray encode(const QDomDocument& document)
{
    QString text;
    QTextStream stream(&text, QIODevice::WriteOnly);
    stream.setEncoding(QStringConverter::Utf8);
    // A document read from a file may declare another encoding than the one it is written in.
    const bool hasDeclaration = isDeclaration(document.firstChild());
    document.save(stream, indentation,
                  hasDeclaration ? QDomNode::EncodingFromTextStream : QDomNode::EncodingFromDocument);
    stream.flush();
    // Attributes and the texts of parsed documents have not passed through the builder.
    return LvXMLBuilder::legalText(text).toUtf8();
}

} // namespace

QDomElement LvXMLBuilder::buildDomElement(const QDomElement& parent, const QString& name)
{
    const QDomElement child = parent.ownerDocument().createElement(name);
    return QDomNode(parent).appendChild(child).toElement();
}

QDomElement LvXMLBuilder::buildDomElement(const QDomElement& parent, const QString& name, const QString& text)
{
    QDomElement child = buildDomElement(parent, name);
    const QString legal = legalText(text);
    if (legal.isEmpty()) {
        return child;
    }
    QDomDocument document = child.ownerDocument();
    // Reading drops a text of nothing but white space: it takes that for indentation.
    const bool isBlank = std::all_of(legal.begin(), legal.end(), [](QChar unit) { return unit.isSpace(); });
    child.appendChild(isBlank ? document.createCDATASection(legal) : document.createTextNode(legal));
    return child;
}

QDomElement LvXMLBuilder::buildDomElement(const QDomElement& parent, const QString& name, int number)
{
    return buildDomElement(parent, name, QString::number(number));
}

QDomElement LvXMLBuilder::buildRootElement(QDomDocument& document, const QString& name)
{
    document.removeChild(document.documentElement());
    if (!isDeclaration(document.firstChild())) {
        const QDomNode declaration = document.createProcessingInstruction(
            QStringLiteral("xml"), QStringLiteral(R"(version="1.0" encoding="UTF-8")"));
        document.insertBefore(declaration, document.firstChild());
    }
    return document.appendChild(document.createElement(name)).toElement();
}

bool LvXMLBuilder::saveUTF8(const QDomDocument& document, const QFileInfo& file, QStringList* errorHistory)
{
    if (document.documentElement().isNull()) {
        return refuse(QCoreApplication::translate("LvXMLBuilder", "Das Dokument ist leer."), file,
                      errorHistory);
    }
    if (isTooDeep(document)) {
        return refuse(QCoreApplication::translate("LvXMLBuilder", "Die Elemente sind zu tief geschachtelt."),
                      file, errorHistory);
    }
    const QFileInfo now(file.absoluteFilePath());
    if (now.exists() && !now.isFile() && !now.isDir()) {
        // The temporary file would take the place of the device or of the pipe itself.
        return refuse(QCoreApplication::translate("LvXMLBuilder", "Das ist keine gewöhnliche Datei."), file,
                      errorHistory);
    }
    QSaveFile output(now.filePath());
    if (!output.open(QIODevice::WriteOnly)) {
        return refuse(output.errorString(), file, errorHistory);
    }
    const QByteArray bytes = encode(document);
    // Without the flush, commit() would not notice that the last bytes of the buffer could not be written.
    if (output.write(bytes) != bytes.size() || !output.flush()) {
        return refuse(output.errorString(), file, errorHistory);
    }
    return output.commit() || refuse(output.errorString(), file, errorHistory);
}

QString LvXMLBuilder::legalText(const QString& text)
{
    QString legal;
    qsizetype copied = 0;
    qsizetype index = 0;
    while (index < text.size()) {
        const qsizetype units = legalUnits(text, index);
        if (units == 0) {
            legal += QStringView(text).mid(copied, index - copied);
            copied = index + 1;
        }
        index += std::max<qsizetype>(units, 1);
    }
    if (copied == 0) {
        return text;
    }
    return legal += QStringView(text).mid(copied);
}
