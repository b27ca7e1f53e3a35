#include "number_validator.h"

#include <QLocale>
#include <QTest>

#include <climits>

class tst_number_validator : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void validate_data();
    void validate();

    void fixup_data();
    void fixup();
};

void tst_number_validator::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_number_validator::validate_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QValidator::State>("expected");

    for (const QString &locale : {QStringLiteral("C"), QStringLiteral("de_DE")}) {
        const QByteArray l = locale.toLatin1();
        QTest::addRow("%s: plain minutes", l.constData())
            << locale << "15" << QValidator::Acceptable;
        QTest::addRow("%s: empty", l.constData()) << locale << "" << QValidator::Intermediate;
        QTest::addRow("%s: negative", l.constData()) << locale << "-5" << QValidator::Invalid;
        // the decimal and group marks of either locale are refused
        QTest::addRow("%s: grouped point", l.constData())
            << locale << "1.000" << QValidator::Invalid;
        QTest::addRow("%s: grouped comma", l.constData())
            << locale << "1,000" << QValidator::Invalid;
        QTest::addRow("%s: largest int", l.constData())
            << locale << QString::number(INT_MAX) << QValidator::Acceptable;
        QTest::addRow("%s: letters", l.constData()) << locale << "12a" << QValidator::Invalid;
    }
}

void tst_number_validator::validate()
{
    QFETCH(QString, locale);
    QFETCH(QString, input);
    QFETCH(QValidator::State, expected);

    QLocale::setDefault(QLocale(locale));
    const number_validator validator;
    int pos = input.size();
    QCOMPARE(validator.validate(input, pos), expected);
}

void tst_number_validator::fixup_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");

    QTest::addRow("comma dropped") << "1,5" << QString("15");
    QTest::addRow("both dropped") << "1.234,5" << QString("12345");
    QTest::addRow("plain stays") << "15" << QString("15");
    QTest::addRow("only marks") << ".,." << QString();
}

void tst_number_validator::fixup()
{
    QFETCH(QString, input);
    QFETCH(QString, expected);
    const number_validator validator;
    validator.fixup(input);
    QCOMPARE(input, expected);
    int pos = input.size();
    if (!input.isEmpty())
        QCOMPARE(validator.validate(input, pos), QValidator::Acceptable);
}

QTEST_GUILESS_MAIN(tst_number_validator)
#include "tst_number_validator.moc"
