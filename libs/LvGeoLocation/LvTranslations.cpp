#include "LvTranslations.h"

#include <QCoreApplication>
#include <QTranslator>

#include <memory>

namespace
{

constexpr auto sourceLanguage = QLocale::German;
constexpr auto fallbackLanguage = QLocale::English;

bool load(QTranslator& translator, const QString& catalogue, QLocale::Language language)
{
    return translator.load(
        QStringLiteral(":/translations/%1_%2.qm").arg(catalogue, QLocale::languageToCode(language)));
}

} // namespace

QLocale::Language LvTranslations::install(const QLocale& locale, const QString& catalogue)
{
    QCoreApplication* application = QCoreApplication::instance();
    if (application == nullptr) {
        return sourceLanguage;
    }
    const QString objectName = QStringLiteral("LvTranslations-%1").arg(catalogue);
    delete application->findChild<QTranslator*>(objectName,
                                                Qt::FindDirectChildrenOnly); // an earlier language

    QList<QLocale::Language> languages;
    const QStringList names = locale.uiLanguages();
    for (const QString& name : names) {
        languages.append(QLocale::codeToLanguage(name.section(u'-', 0, 0)));
    }
    languages.append(fallbackLanguage);

    auto translator = std::make_unique<QTranslator>();
    for (const QLocale::Language language : std::as_const(languages)) {
        if (language == sourceLanguage) {
            return sourceLanguage;
        }
        if (load(*translator, catalogue, language)) {
            translator->setObjectName(objectName);
            translator->setParent(application);
            QCoreApplication::installTranslator(translator.release());
            return language;
        }
    }
    return sourceLanguage;
}
