#include "LvXMLBuilder.h"

#include "LvXMLWriter.h"

#include <QCoreApplication>
#include <QSaveFile>

#include <algorithm>

namespace
{

/// A file that gives up when it becomes too large.
class BoundedSaveFile : public QSaveFile
{
public:
    BoundedSaveFile(const QString& name, qint64 maximumBytes)
        : QSaveFile(name)
        , myRoom(maximumBytes)
    {
    }

    [[nodiscard]] bool isTooLarge() const { return myRoom < 0; }

protected:
    qint64 writeData(const char* bytes, qint64 count) override
    {
        if (count > myRoom) {
            myRoom = -1; // for good, or later and smaller pieces would make a file with gaps
            return -1;
        }
        const qint64 taken = QSaveFile::writeData(bytes, count);
        myRoom -= std::max<qint64>(taken, 0); // a disk that is almost full takes a part
        return taken;
    }

private:
    qint64 myRoom;
};

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

/// Whether elements lie deeper inside each other than can be read again.
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
    return saveUTF8(document, {}, file, errorHistory);
}

bool LvXMLBuilder::saveUTF8(const QDomDocument& document, const std::vector<LvXMLLateText>& lateTexts,
                            const QFileInfo& file, QStringList* errorHistory, qint64 maximumBytes)
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
    BoundedSaveFile output(now.filePath(), maximumBytes);
    if (!output.open(QIODevice::WriteOnly)) {
        return refuse(output.errorString(), file, errorHistory);
    }
    if (!LvXMLWriter(output).write(document, lateTexts)) {
        return refuse(
            QCoreApplication::translate("LvXMLBuilder", "Ein Text gehört zu keinem Element des Dokuments."),
            file, errorHistory);
    }
    if (output.isTooLarge()) {
        constexpr qint64 bytesPerMebibyte = qint64(1) << 20;
        return refuse(QCoreApplication::translate("LvXMLBuilder", "Sie würde größer als %1 MiB.")
                          .arg(maximumBytes / bytesPerMebibyte),
                      file, errorHistory);
    }
    // Without the flush, commit() would not notice that the last bytes of the buffer could not be written.
    if (output.error() != QFileDevice::NoError || !output.flush()) {
        return refuse(output.errorString(), file, errorHistory);
    }
    return output.commit() || refuse(output.errorString(), file, errorHistory);
}

QString LvXMLBuilder::legalText(const QString& text)
{
    QString legal;
    qsizetype copied = 0;
    qsizetype index = LvXMLWriter::findSuspect(text, 0);
    while (index < text.size()) {
        const qsizetype units = LvXMLWriter::legalUnits(text, index);
        if (units == 0) {
            legal += QStringView(text).mid(copied, index - copied);
            copied = index + 1;
        }
        index = LvXMLWriter::findSuspect(text, index + std::max<qsizetype>(units, 1));
    }
    if (copied == 0) {
        return text;
    }
    return legal += QStringView(text).mid(copied);
}
