#include "dialog_settings.h"

#include <vn/combobox.h>

#include <QtTest>

#include <QSettings>

class tst_dialog_settings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void shows_stored_language_data();
    void shows_stored_language();
    void choice_is_stored_at_once_data();
    void choice_is_stored_at_once();
};

void tst_dialog_settings::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
    QVERIFY(QSettings().fileName().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")));
}

void tst_dialog_settings::init()
{
    QSettings().clear();
}

void tst_dialog_settings::shows_stored_language_data()
{
    QTest::addColumn<QString>("stored"); // empty: no key
    QTest::addColumn<QString>("shown");
    QTest::addRow("german") << "de"
                            << "Deutsch";
    QTest::addRow("english") << "en"
                             << "English";
    // A code without a catalogue is kept, and the box shows English.
    QTest::addRow("french") << "fr"
                            << "English";
}

void tst_dialog_settings::shows_stored_language()
{
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    QSettings().setValue(QStringLiteral("lang"), stored);

    dialog_settings dialog;
    QCOMPARE(dialog.language_box()->count(), 2);
    QCOMPARE(dialog.language_box()->itemText(0), QStringLiteral("English"));
    QCOMPARE(dialog.language_box()->itemData(0).toString(), QStringLiteral("en"));
    QCOMPARE(dialog.language_box()->itemText(1), QStringLiteral("Deutsch"));
    QCOMPARE(dialog.language_box()->itemData(1).toString(), QStringLiteral("de"));
    QCOMPARE(dialog.language_box()->currentText(), shown);
    // Showing the stored choice writes nothing.
    QCOMPARE(QSettings().value(QStringLiteral("lang")).toString(), stored);
    QCOMPARE(QSettings().allKeys(), QStringList{"lang"});
    QVERIFY(!(dialog.windowFlags() & Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Settings"));
}

void tst_dialog_settings::choice_is_stored_at_once_data()
{
    QTest::addColumn<QStringList>("choices");
    QTest::addColumn<QString>("stored");
    QTest::addRow("to german") << QStringList{"Deutsch"} << "de";
    QTest::addRow("there and back") << QStringList{"Deutsch", "English"} << "en";
}

void tst_dialog_settings::choice_is_stored_at_once()
{
    QFETCH(QStringList, choices);
    QFETCH(QString, stored);
    QSettings().setValue(QStringLiteral("lang"), QStringLiteral("en"));
    dialog_settings dialog;
    for (const QString &choice : qAsConst(choices))
        dialog.language_box()->setCurrentIndex(dialog.language_box()->findText(choice));
    // No apply step and no closing needed.
    QCOMPARE(QSettings().value(QStringLiteral("lang")).toString(), stored);
}

QTEST_MAIN(tst_dialog_settings)
#include "tst_dialog_settings.moc"
