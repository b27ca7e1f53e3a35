#include "dialog_settings.h"

#include <vn/combobox.h>

#include <QtTest>

#include <QSettings>

class tst_dialog_settings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
        QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
        QVERIFY(QSettings().fileName().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")));
    }

    void shows_stored_language_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::addRow("german") << "de"
                                << "Deutsch";
        // A code without a catalogue is kept, and the box shows English.
        QTest::addRow("french") << "fr"
                                << "English";
    }

    void shows_stored_language()
    {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        QSettings().clear();
        QSettings().setValue(QStringLiteral("lang"), stored);

        dialog_settings dialog;
        QCOMPARE(dialog.language_box()->currentText(), shown);
        // Showing the stored choice writes nothing.
        QCOMPARE(QSettings().value(QStringLiteral("lang")).toString(), stored);
        QCOMPARE(QSettings().allKeys(), QStringList{"lang"});
    }

    void choice_is_stored_at_once()
    {
        QSettings().setValue(QStringLiteral("lang"), QStringLiteral("en"));
        dialog_settings dialog;
        vn::combobox *box = dialog.language_box();
        // No apply step and no closing needed.
        box->setCurrentIndex(box->findData(QStringLiteral("de")));
        QCOMPARE(QSettings().value(QStringLiteral("lang")).toString(), QStringLiteral("de"));
        box->setCurrentIndex(box->findText(QStringLiteral("English")));
        QCOMPARE(QSettings().value(QStringLiteral("lang")).toString(), QStringLiteral("en"));
    }
};

QTEST_MAIN(tst_dialog_settings)
#include "tst_dialog_settings.moc"
