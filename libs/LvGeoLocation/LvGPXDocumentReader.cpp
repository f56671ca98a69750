#include "LvGPXDocumentReader.h"

#include "LvFileHandler.h"
#include "LvGPXScanner.h"
#include "LvXMLLoader.h"

#include <QByteArray>
#include <QDomDocument>
#include <QDomElement>
#include <QFileInfo>

#include <optional>

void LvGPXDocumentReader::read(const QFileInfo& file, LvGPXContent root, LvGPXContentBuilder& builder)
{
    const std::optional<QByteArray> bytes = LvFileHandler::readBytes(file);
    if (bytes) {
        read(*bytes, root, builder);
    }
}

void LvGPXDocumentReader::read(const QByteArray& bytes, LvGPXContent root, LvGPXContentBuilder& builder)
{
    // An error anywhere loses the whole document, so what was built until then goes.
    const LvGPXContentBuilder before(builder);
    const LvGPXScanner::Result result = LvGPXScanner(bytes, builder).scan(root);
    if (result == LvGPXScanner::Result::Complete) {
        return;
    }
    builder = before;
    if (result == LvGPXScanner::Result::Unusual) {
        QDomDocument document;
        if (LvXMLLoader::parse(bytes, document)) {
            builder.addElement(document.documentElement(), root);
        }
    }
}
