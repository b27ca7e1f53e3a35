#include "language.h"
#include "model/table_data_model.h"

#include <QFile>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>

namespace {

// One message of a catalogue as the .ts file holds it.
struct ts_message
{
    QString context;
    QString source;
    QString translation;
    QString type; // "unfinished", "vanished", "obsolete" or empty
};

// Reads every message of a .ts file; an empty list when it can't be read.
QList<ts_message> read_ts(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return {};
    }
    QList<ts_message> messages;
    QXmlStreamReader xml(&file);
    QString context;
    ts_message current;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("message")) {
            current = ts_message();
            current.context = context;
        } else if (xml.name() == QLatin1String("source")) {
            current.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            current.type = xml.attributes().value(QLatin1String("type")).toString();
            current.translation = xml.readElementText();
            messages << current;
        }
    }
    if (xml.hasError())
        *error = xml.errorString();
    return messages;
}

// The %n and %v/%m markers of a text, sorted.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression marker(QStringLiteral("%(\\d+|[vm])"));
    QStringList found;
    auto it = marker.globalMatch(text);
    while (it.hasNext())
        found << it.next().captured();
    std::sort(found.begin(), found.end());
    return found;
}

QString source_root()
{
    return QStringLiteral(VN_TEST_SOURCE_DIR "/..");
}

} // namespace

class tst_translations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void german_texts_data();
    void german_texts();
    void model_headers_in_german_data();
    void model_headers_in_german();
    void catalogue_complete_data();
    void catalogue_complete();
    void qt_catalogue_data();
    void qt_catalogue();
};

void tst_translations::initTestCase()
{
    QCoreApplication::setOrganizationName("OrvaneTest");
    QCoreApplication::setApplicationName("Translations Test");
    QSettings().setValue("lang", "de");
    // The same call as at start-up: it has to reach the embedded catalogues
    // on its own.
    install_translators();
}

void tst_translations::german_texts_data()
{
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");

    // Toolkit
    QTest::addRow("log window title") << "vn::application_log"
                                      << "Application Log"
                                      << "Anwendungsprotokoll";
    QTest::addRow("log clear question") << "vn::application_log"
                                        << "Do you really want to clear the application logs?"
                                        << "Möchten Sie die Anwendungsprotokolle wirklich leeren?";
    QTest::addRow("log saved, file name on its own line")
        << "vn::application_log"
        << "The application logs were saved to\n%1"
        << "Die Anwendungsprotokolle wurden gespeichert unter\n%1";
    QTest::addRow("fatal error title") << "QObject"
                                       << "Fatal error"
                                       << "Schwerwiegender Fehler";
    QTest::addRow("date format label") << "vn::datetime_format_selector"
                                       << "DD.MM.YYYY"
                                       << "TT.MM.JJJJ";

    // Application
    QTest::addRow("waypoints track") << "gpx_parser"
                                     << "Waypoints"
                                     << "Wegpunkte";
    QTest::addRow("cleared row") << "table_data_model"
                                 << "Clear GPS data"
                                 << "GPS-Daten löschen";
    QTest::addRow("language prompt, quit") << "QObject"
                                           << "Quit now"
                                           << "Jetzt beenden";
    QTest::addRow("progress format") << "MainWindow"
                                     << "%v of %m"
                                     << "%v von %m";
    QTest::addRow("file filter keeps its trailing blank") << "MainWindow"
                                                          << "All supported files "
                                                          << "Alle unterstützten Dateien ";
    QTest::addRow("settings title") << "dialog_settings"
                                    << "Settings"
                                    << "Einstellungen";

    // A text of another context stays in English.
    QTest::addRow("wrong context untranslated") << "vn::application_log"
                                                << "Waypoints"
                                                << "Waypoints";
}

void tst_translations::german_texts()
{
    QFETCH(QString, context);
    QFETCH(QString, source);
    QFETCH(QString, expected);

    QCOMPARE(QCoreApplication::translate(qPrintable(context), qPrintable(source)), expected);
}

void tst_translations::model_headers_in_german_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QString>("expected");
    QTest::addRow("photo") << 0 << "Foto";
    QTest::addRow("recording date") << 1 << "Aufnahmedatum";
    QTest::addRow("gps tag") << 2 << "GPS-Tag";
}

void tst_translations::model_headers_in_german()
{
    QFETCH(int, section);
    QFETCH(QString, expected);

    table_data_model model;
    QCOMPARE(model.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString(), expected);
}

void tst_translations::catalogue_complete_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("known_context"); // must be present with messages
    QTest::addRow("toolkit") << source_root() + "/vn_toolkit/translations/vn_toolkit_de.ts"
                             << "vn::application_log";
    QTest::addRow("application") << source_root() + "/resources/translations/loxmere_de.ts"
                                 << "table_data_model";
}

void tst_translations::catalogue_complete()
{
    QFETCH(QString, path);
    QFETCH(QString, known_context);

    QString error;
    const QList<ts_message> messages = read_ts(path, &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QVERIFY(std::any_of(messages.cbegin(), messages.cend(),
                        [&](const ts_message &m) { return m.context == known_context; }));

    for (const ts_message &m : messages) {
        const QByteArray where = (m.context + QStringLiteral(": ") + m.source).toUtf8();
        QVERIFY2(m.type.isEmpty(), where.constData());
        QVERIFY2(!m.translation.isEmpty(), where.constData());
        QVERIFY2(placeholders(m.translation) == placeholders(m.source), where.constData());
        QVERIFY2(m.translation.count(QLatin1Char('\n')) == m.source.count(QLatin1Char('\n')),
                 where.constData());
        QVERIFY2(m.translation.endsWith(QLatin1Char(' ')) == m.source.endsWith(QLatin1Char(' ')),
                 where.constData());
        // What the program finds in its resources is what the file says:
        // a stale embedded catalogue shows up here.
        QCOMPARE(QCoreApplication::translate(m.context.toUtf8().constData(),
                                             m.source.toUtf8().constData()),
                 m.translation);
    }
}

void tst_translations::qt_catalogue_data()
{
    QTest::addColumn<QString>("file_name");
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    QTest::addRow("dialog buttons") << "qt_de"
                                    << "QPlatformTheme"
                                    << "&Yes"
                                    << "&Ja";
    QTest::addRow("cancel") << "qt_de"
                            << "QPlatformTheme"
                            << "Cancel"
                            << "Abbrechen";
}

void tst_translations::qt_catalogue()
{
    QFETCH(QString, file_name);
    QFETCH(QString, context);
    QFETCH(QString, source);
    QFETCH(QString, expected);

    QTranslator translator;
    QVERIFY2(translator.load(file_name, QLibraryInfo::location(QLibraryInfo::TranslationsPath)),
             qPrintable(QLibraryInfo::location(QLibraryInfo::TranslationsPath)));
    QCOMPARE(translator.translate(qPrintable(context), qPrintable(source)), expected);
    // The catalogue installed at start-up gives the same.
    QCOMPARE(QCoreApplication::translate(qPrintable(context), qPrintable(source)), expected);
}

QTEST_MAIN(tst_translations)
#include "tst_translations.moc"
