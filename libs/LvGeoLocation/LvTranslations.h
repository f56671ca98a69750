#pragma once

#include "lvgeolocation_export.h"

#include <QLocale>
#include <QString>

/**
 * The languages of the texts that users see. The source texts are German; catalogues of other languages are
 * compiled into the libraries and programs.
 */
class LVGEOLOCATION_EXPORT LvTranslations
{
public:
    LvTranslations() = delete;

    /**
     * Shows the texts of all Lv libraries in the language of the locale:
     *
     *     QApplication application(argc, argv);
     *     LvTranslations::install();
     *
     * The languages that the user prefers are tried in their order (QLocale::uiLanguages()); where none is
     * available the texts are English. May be called again at any time; widgets that handle
     * QEvent::LanguageChange then change their texts.
     *
     * A program with German source texts and catalogues of its own, compiled in as
     * ":/translations/<catalogue>_<language>.qm" (see lv_add_translations in cmake/LvTargets.cmake), calls it
     * once more with their name.
     *
     * For the user-interface thread, once the application object exists.
     * Returns the language of the texts from now on; German also when there is no application object or no
     * catalogue of that name: the source texts are always there.
     */
    static QLocale::Language install(const QLocale& locale = QLocale(),
                                     const QString& catalogue = QStringLiteral("LvGeoLocation"));
};
