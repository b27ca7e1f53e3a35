#include "language.h"

#include <QAbstractButton>
#include <QDesktopServices>
#include <QMessageBox>
#include <QSettings>
#include <QtTest>

#include <functional>

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

    void translators_follow_language_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("expected");
        // Translators stay installed for the whole process, so the language
        // without a catalogue comes first.
        QTest::addRow("unknown code: no catalogue, source text") << "xx"
                                                                 << "&Yes";
        QTest::addRow("French: Qt has its own catalogue") << "fr"
                                                          << "&Oui";
        QTest::addRow("German: Qt's own catalogue") << "de"
                                                    << "&Ja";
    }

    void translators_follow_language()
    {
        QFETCH(QString, stored);
        QFETCH(QString, expected);

        QSettings().setValue("lang", stored);
        install_translators();
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "&Yes"), expected);
    }

    void language_change_data()
    {
        QTest::addColumn<QString>("now");
        QTest::addColumn<QString>("old");
        QTest::addColumn<QString>("click"); // "" when no question may come
        QTest::addColumn<bool>("expected");
        QTest::addRow("unchanged asks nothing") << "de"
                                                << "de"
                                                << "" << false;
        QTest::addRow("changed, continue working") << "en"
                                                   << "de"
                                                   << "Continue working" << false;
        // Last: quit() makes every later nested event loop return at once.
        QTest::addRow("changed, quit now") << "de"
                                           << "en"
                                           << "Quit now" << true;
    }

    void language_change()
    {
        QFETCH(QString, now);
        QFETCH(QString, old);
        QFETCH(QString, click);
        QFETCH(bool, expected);

        QSettings().setValue("lang", now);
        // Earlier cases leave German translators installed: the box speaks the
        // language of those, whatever "lang" says now.
        const QString click_text = QCoreApplication::translate("QObject", qPrintable(click));
        bool asked = false;
        QString title;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            asked = true;
            title = box->windowTitle();
            const auto buttons = box->findChildren<QAbstractButton *>();
            for (QAbstractButton *button : buttons) {
                if (button->text() == click_text)
                    return button->click();
            }
            box->reject();
        });
        timer.start(10);
        QCOMPARE(confirm_language_change(nullptr, old), expected);
        QCOMPARE(asked, !click.isEmpty());
        if (asked)
            QCOMPARE(title, QCoreApplication::translate("QObject", "Application language changed"));
    }

private:
    url_catcher catcher;
    QTemporaryDir pages;
};

QTEST_MAIN(tst_language)
#include "tst_language.moc"
