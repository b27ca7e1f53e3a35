#include "language.h"
#include "model/table_data_model.h"

#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>

namespace {

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

} // namespace

class tst_translations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("OrvaneTest");
        QCoreApplication::setApplicationName("Translations Test");
        QSettings().setValue("lang", "de");
        // The same call as at start-up: it has to reach the embedded catalogues
        // on its own.
        install_translators();
    }

    void model_headers_in_german()
    {
        table_data_model model;
        QStringList headers;
        for (int section = 0; section < 3; ++section)
            headers << model.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
        QCOMPARE(headers, QStringList({"Foto", "Aufnahmedatum", "GPS-Tag"}));
    }

    void catalogue_complete_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("known_context"); // must be present with messages
        const QString root = QStringLiteral(VN_TEST_SOURCE_DIR "/..");
        QTest::addRow("toolkit") << root + "/vn_toolkit/translations/vn_toolkit_de.ts"
                                 << "vn::application_log";
        QTest::addRow("application") << root + "/resources/translations/loxmere_de.ts"
                                     << "table_data_model";
    }

    void catalogue_complete()
    {
        QFETCH(QString, path);
        QFETCH(QString, known_context);

        QFile file(path);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
        QXmlStreamReader xml(&file);
        QString context;
        QString source;
        bool known_seen = false;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == QLatin1String("name")) {
                context = xml.readElementText();
            } else if (xml.name() == QLatin1String("source")) {
                source = xml.readElementText();
            } else if (xml.name() == QLatin1String("translation")) {
                const QString type = xml.attributes().value(QLatin1String("type")).toString();
                const QString translation = xml.readElementText();
                const QByteArray where = (context + QStringLiteral(": ") + source).toUtf8();
                known_seen |= context == known_context;
                QVERIFY2(type.isEmpty() && !translation.isEmpty(), where.constData());
                QVERIFY2(placeholders(translation) == placeholders(source), where.constData());
                QVERIFY2(translation.count('\n') == source.count('\n'), where.constData());
                QVERIFY2(translation.endsWith(' ') == source.endsWith(' '), where.constData());
                // What the program finds in its resources is what the file says:
                // a stale embedded catalogue shows up here.
                QCOMPARE(QCoreApplication::translate(context.toUtf8().constData(),
                                                     source.toUtf8().constData()),
                         translation);
            }
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QVERIFY(known_seen);
    }

    // Qt's own catalogue comes from the system's translations and is installed
    // at start-up with ours.
    void qt_catalogue()
    {
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "&Yes"), QStringLiteral("&Ja"));
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"),
                 QStringLiteral("Abbrechen"));
    }
};

QTEST_MAIN(tst_translations)
#include "tst_translations.moc"
