#include "language.h"
#include "modal_watcher.h"

#include <QDesktopServices>
#include <QSettings>
#include <QtTest>

// Receives the URLs that QDesktopServices would hand to the browser.
class url_catcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls << url; }
};

class tst_language : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("OrvaneTest");
        QCoreApplication::setApplicationName("Lang Test");
        QDesktopServices::setUrlHandler("file", &catcher, "open");
        QVERIFY(pages.isValid());
    }

    void init()
    {
        QSettings().clear();
        catcher.urls.clear();
    }

    void cleanupTestCase() { QDesktopServices::unsetUrlHandler("file"); }

    void current_language_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("system");
        QTest::addColumn<QString>("expected");
        QTest::addRow("German system") << "" << int(QLocale::German) << "de";
        QTest::addRow("English system") << "" << int(QLocale::English) << "en";
        QTest::addRow("Korean system gets English") << "" << int(QLocale::Korean) << "en";
        QTest::addRow("Japanese system gets English") << "" << int(QLocale::Japanese) << "en";
        QTest::addRow("stored taken as it is") << "fr" << int(QLocale::German) << "fr";
    }

    void current_language()
    {
        QFETCH(QString, stored);
        QFETCH(int, system);
        QFETCH(QString, expected);

        if (!stored.isEmpty())
            QSettings().setValue("lang", stored);
        QCOMPARE(::current_language(QLocale(QLocale::Language(system))), expected);
    }

    void help_page_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("expected_lang");
        QTest::addRow("German page") << "de"
                                     << "de";
        QTest::addRow("no French page: English") << "fr"
                                                 << "en";
    }

    void help_page()
    {
        QFETCH(QString, stored);
        QFETCH(QString, expected_lang);

        QSettings().setValue("lang", stored);
        const QString name_template = pages.path() + "/page_%1.html";
        for (const QString lang : {"de", "en"}) {
            QFile page(name_template.arg(lang));
            QVERIFY(page.open(QIODevice::WriteOnly));
            // A NUL ends the text; what follows it must not appear.
            page.write(QString("<p>%1: StXrg + Q, CtXrl + O, Grüße</p>").arg(lang).toUtf8() +
                       QByteArray("\0tail", 5));
        }

        const QString target = show_help_page(name_template);
        QCOMPARE(target, QDir::tempPath() + "/langtest_help_" + expected_lang + ".html");
        QFile written(target);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(written.readAll()),
                 QString("<p>%1: Strg + Q, Ctrl + O, Grüße</p>").arg(expected_lang));
        // Three slashes, not four.
        QCOMPARE(catcher.urls, QList<QUrl>{QUrl("file://" + target)});
    }

    void help_page_missing_warns()
    {
        QSettings().setValue("lang", "de");
        const QString name_template = pages.path() + "/missing_%1.html";
        QTest::ignoreMessage(
            QtWarningMsg, qPrintable("QString show_help_page(const QString&): Could not open "
                                     "help file for language en with template " +
                                     name_template + " resulting in " + name_template.arg("en")));
        QCOMPARE(show_help_page(name_template), QString());
        QVERIFY(catcher.urls.isEmpty());
    }

    void translators_follow_language()
    {
        // Translators stay installed for the whole process, so the language
        // without a catalogue comes first.
        const char *rows[][2] = {{"xx", "&Yes"}, {"fr", "&Oui"}, {"de", "&Ja"}};
        for (const auto &row : rows) {
            QSettings().setValue("lang", row[0]);
            install_translators();
            QCOMPARE(QCoreApplication::translate("QPlatformTheme", "&Yes"), QString(row[1]));
        }
    }

    void language_change_data()
    {
        QTest::addColumn<QString>("now");
        QTest::addColumn<QString>("old");
        QTest::addColumn<QString>("click"); // "" when no question may come
        QTest::addColumn<bool>("expected");
        const char *rows[][3] = {{"de", "de", ""},
                                 {"en", "de", "Continue working"},
                                 // Last: quit() makes every later nested event loop return at once.
                                 {"de", "en", "Quit now"}};
        for (const auto &row : rows)
            QTest::addRow("%s to %s", row[1], row[0])
                << row[0] << row[1] << row[2] << (row[2] == QLatin1String("Quit now"));
    }

    void language_change()
    {
        QFETCH(QString, now);
        QFETCH(QString, old);
        QFETCH(QString, click);
        QFETCH(bool, expected);

        QSettings().setValue("lang", now);
        // The German translators of the test above are installed: the box speaks
        // German, whatever "lang" says now.
        QStringList titles;
        modal_watcher watcher([&](QWidget *box) {
            titles << box->windowTitle();
            if (!modal_watcher::click(box,
                                      QCoreApplication::translate("QObject", qPrintable(click))))
                box->close();
        });
        QCOMPARE(confirm_language_change(nullptr, old), expected);
        QCOMPARE(titles.size(), click.isEmpty() ? 0 : 1);
        if (!titles.isEmpty())
            QCOMPARE(titles.first(),
                     QCoreApplication::translate("QObject", "Application language changed"));
    }

private:
    url_catcher catcher;
    QTemporaryDir pages;
};

QTEST_MAIN(tst_language)
#include "tst_language.moc"
