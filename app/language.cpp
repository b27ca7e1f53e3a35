#include "language.h"

#include <vn/message_box.h>

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QList>
#include <QLocale>
#include <QMap>
#include <QSettings>
#include <QTextStream>
#include <QTranslator>
#include <QUrl>

namespace {

// The languages that have a translation.
const QList<QLocale> supported_locales = {QLocale(QLocale::German), QLocale(QLocale::English)};

// Codes of the languages the program knows by name; more than it translates.
const QMap<QLocale::Language, QString> language_codes = {
    {QLocale::English, QStringLiteral("en")},
    {QLocale::French, QStringLiteral("fr")},
    {QLocale::German, QStringLiteral("de")},
    {QLocale::Korean, QStringLiteral("kr")},
};

void install_translator(const QString &file_name, const QString &directory = QString())
{
    // The result of load() doesn't matter: an empty translator leaves the
    // source texts. It stays installed until the process ends.
    auto *translator = new QTranslator(nullptr);
    translator->load(file_name, directory);
    QCoreApplication::installTranslator(translator);
}

} // namespace

QString current_language()
{
    return current_language(QLocale::system());
}

QString current_language(const QLocale &system)
{
    const QString stored = QSettings().value(QStringLiteral("lang")).toString();
    if (!stored.isEmpty())
        return stored;
    const QLocale::Language language = system.language();
    if (language_codes.contains(language) && supported_locales.contains(QLocale(language)))
        return language_codes.value(language);
    return language_codes.value(QLocale::English);
}

void install_translators()
{
    // The catalogues live in static libraries: without these calls the linker
    // leaves their resource data out and every text stays English.
    Q_INIT_RESOURCE(loxmere_translations);
    Q_INIT_RESOURCE(vn_toolkit_translations);

    const QString lang = current_language();
    install_translator(QStringLiteral("qt_") + lang,
                       QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install_translator(QStringLiteral(":/translations/") + lang);
    install_translator(QStringLiteral(":/translations/toolkit_") + lang);
}

bool confirm_language_change(QWidget *parent, const QString &old_language)
{
    if (current_language() == old_language)
        return false;
    const auto answer = vn::message_box::question(
        parent, QObject::tr("Application language changed"),
        QObject::tr("The application language has been changed.\nThe application needs to be "
                    "restarted to use the new language."),
        QObject::tr("Continue working"), QObject::tr("Quit now"), QMessageBox::Yes);
    if (answer != QMessageBox::No)
        return false;
    QCoreApplication::quit();
    return true;
}

QString show_help_page(const QString &name_template)
{
    QString lang = current_language();
    if (!QFile::exists(name_template.arg(lang)))
        lang = QStringLiteral("en");

    QFile source(name_template.arg(lang));
    if (!source.open(QIODevice::ReadOnly)) {
        qWarning("%s: Could not open help file for language %s with template %s resulting in %s",
                 Q_FUNC_INFO, qUtf8Printable(lang), qUtf8Printable(name_template),
                 qUtf8Printable(source.fileName()));
        return QString();
    }
    QByteArray bytes = source.readAll();
    const int nul = bytes.indexOf('\0');
    if (nul >= 0)
        bytes.truncate(nul);
    QString text = QString::fromUtf8(bytes);
    // The pages spell the key names so that a translation tool leaves them be.
    text.replace(QStringLiteral("StXrg"), QStringLiteral("Strg"));
    text.replace(QStringLiteral("CtXrl"), QStringLiteral("Ctrl"));

    QString base = QCoreApplication::applicationName().toLower();
    base.remove(QLatin1Char(' '));
    const QString target = QDir::tempPath() + QStringLiteral("/%1_help_%2.html").arg(base, lang);
    QFile page(target);
    if (page.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        QTextStream stream(&page);
        stream.setCodec("UTF-8");
        stream << text;
        stream.flush();
        page.close();
    }
    // fromLocalFile: "file:///" + an absolute Unix path would give four slashes.
    QDesktopServices::openUrl(QUrl::fromLocalFile(target));
    return target;
}
