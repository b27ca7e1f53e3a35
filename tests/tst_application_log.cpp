#include <vn/application_log.h>

#include <QAbstractButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

#include <iostream>
#include <thread>

// One log per process: the streams can be tapped only once. cleanup() brings
// it back to an empty, hidden state.
class tst_application_log : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void hidden_window_text_arrives_after_show();
    void filtered_text_data();
    void filtered_text();
    void filter_keeps_lines();
    void commands_data();
    void commands();
    void tab_bar_only_with_second_tab();
    void save_format_data();
    void save_format();
    void two_threads_write_whole_lines();
    void clear_button_asks_data();
    void clear_button_asks();
    void failed_save_warns_without_success_box();

private:
    vn::application_log *log = nullptr;
    QString app_tab;
    QString received(); // shows the window and takes what the next polls bring
};

void tst_application_log::initTestCase()
{
    QCoreApplication::setApplicationName("LogTest");
    QCoreApplication::setApplicationVersion("9.8.7");
    app_tab = QCoreApplication::applicationName();
    log = vn::application_log::create(qApp);
    QVERIFY(log);
    QCOMPARE(vn::application_log::create(qApp), log);
    QCOMPARE(vn::application_log::instance(), log);
    log->add_command("probe", [](const QString &arg) {
        std::cout << "probe got [" << arg.toStdString() << "]" << std::endl;
    });
    log->add_command("probe-long", [](const QString &arg) {
        std::cout << "probe-long got [" << arg.toStdString() << "]" << std::endl;
    });
    log->add_command(
        "secret", [](const QString &) {}, true);
}

void tst_application_log::cleanup()
{
    log->window()->show();
    log->poll();
    log->filter_edit()->clear();
    log->clear_logs();
    log->window()->hide();
}

QString tst_application_log::received()
{
    log->window()->show();
    log->poll();
    return log->tab_text(app_tab);
}

void tst_application_log::hidden_window_text_arrives_after_show()
{
    log->window()->hide();
    std::cout << "first while hidden\n";
    std::cerr << "second while hidden" << std::endl;
    log->poll();
    QCOMPARE(log->tab_text(app_tab), QString());

    log->window()->show();
    // The timer's first poll brings both lines at once.
    QTRY_COMPARE(log->tab_text(app_tab), QString("first while hidden\nsecond while hidden\n"));
    QCOMPARE(log->view(app_tab)->toPlainText(), log->tab_text(app_tab));
}

void tst_application_log::filtered_text_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("expected");
    QTest::addRow("empty filter keeps text as it is") << "a\n\nb"
                                                      << ""
                                                      << "a\n\nb";
    QTest::addRow("case-insensitive") << "Warning: x\nDebug: y\n"
                                      << "warn"
                                      << "Warning: x\n";
    QTest::addRow("empty lines dropped") << "ab\n\nab\n"
                                         << "a"
                                         << "ab\nab\n";
    QTest::addRow("last line gets a line feed") << "x1\nx2"
                                                << "x"
                                                << "x1\nx2\n";
    QTest::addRow("nothing matches") << "a\nb\n"
                                     << "zz"
                                     << "";
    QTest::addRow("two hits on one line, kept once") << "xaxa\nb\n"
                                                     << "a"
                                                     << "xaxa\n";
    QTest::addRow("hit at start and end of text") << "ab\nc\nab"
                                                  << "ab"
                                                  << "ab\nab\n";
    QTest::addRow("line feed in filter matches nothing") << "a\nb\n"
                                                         << "a\nb"
                                                         << "";
    QTest::addRow("filter longer than a line") << "ab\nabc\n"
                                               << "abc"
                                               << "abc\n";
    QTest::addRow("umlaut case") << QString::fromUtf8("ÄRGER\nok\n") << QString::fromUtf8("ärg")
                                 << QString::fromUtf8("ÄRGER\n");
}

void tst_application_log::filtered_text()
{
    QFETCH(QString, text);
    QFETCH(QString, filter);
    QFETCH(QString, expected);
    QCOMPARE(vn::application_log::filtered_text(text, filter), expected);
}

void tst_application_log::filter_keeps_lines()
{
    std::cout << "Debug: alpha\nWarning: beta\nDebug: gamma\n" << std::flush;
    QCOMPARE(received(), QString("Debug: alpha\nWarning: beta\nDebug: gamma\n"));

    log->filter_edit()->setText("DEBUG");
    QCOMPARE(log->view(app_tab)->toPlainText(), QString("Debug: alpha\nDebug: gamma\n"));

    // New text under a filter rebuilds the view from the whole log.
    std::cout << "Warning: delta\nDebug: epsilon\n" << std::flush;
    received();
    QCOMPARE(log->view(app_tab)->toPlainText(),
             QString("Debug: alpha\nDebug: gamma\nDebug: epsilon\n"));

    log->filter_edit()->clear();
    QCOMPARE(log->view(app_tab)->toPlainText(), log->tab_text(app_tab));
    QVERIFY(log->tab_text(app_tab).contains("Warning: beta\n"));
}

void tst_application_log::commands_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("expected_output");
    QTest::addColumn<QString>("box_after");
    const QString list = "List of commands:\n    help\n    probe\n    probe-long\n";
    QTest::addRow("help") << "help" << list << "";
    QTest::addRow("HELP") << "HELP" << list << "";
    QTest::addRow("helpme passes me") << "helpme" << list << "";
    QTest::addRow("argument keeps its case") << "PROBE Some Arg"
                                             << "probe got [ Some Arg]\n"
                                             << "";
    QTest::addRow("longest key wins") << "probe-longX"
                                      << "probe-long got [X]\n"
                                      << "";
    QTest::addRow("no match stays as filter") << "nothing"
                                              << ""
                                              << "nothing";
    QTest::addRow("prefix of a key is no match") << "hel"
                                                 << ""
                                                 << "hel";
}

void tst_application_log::commands()
{
    QFETCH(QString, typed);
    QFETCH(QString, expected_output);
    QFETCH(QString, box_after);

    received();
    log->filter_edit()->setText(typed);
    QTest::keyClick(log->filter_edit(), Qt::Key_Return);
    QCOMPARE(log->filter_edit()->text(), box_after);
    QCOMPARE(received(), expected_output);
}

void tst_application_log::save_format_data()
{
    QTest::addColumn<bool>("desktop_exists");
    QTest::addRow("to the desktop") << true;
    QTest::addRow("desktop missing, to home") << false;
}

void tst_application_log::save_format()
{
    QFETCH(bool, desktop_exists);

    QTemporaryDir home;
    QVERIFY(home.isValid());
    const QByteArray old_home = qgetenv("HOME");
    const QByteArray old_config = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/.config").toUtf8());
    if (desktop_exists)
        QVERIFY(QDir(home.path()).mkpath("Desktop"));

    std::cout << "main line\n" << std::flush;
    received();
    log->add_data("Second", "other line\n");

    const qint64 before = QDateTime::currentSecsSinceEpoch();
    const QString name = log->save_log();
    const qint64 after = QDateTime::currentSecsSinceEpoch();
    qputenv("HOME", old_home);
    qputenv("XDG_CONFIG_HOME", old_config);

    const QString folder = desktop_exists ? home.path() + "/Desktop" : home.path();
    const QRegularExpression name_form("^" + QRegularExpression::escape(folder) +
                                       "/LogTest Log (\\d+)\\.log$");
    const QRegularExpressionMatch match = name_form.match(name);
    QVERIFY2(match.hasMatch(), qPrintable(name));
    QVERIFY(match.captured(1).toLongLong() >= before && match.captured(1).toLongLong() <= after);

    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QString dashes(80, '-');
    const QStringList lines = text.split('\n');
    QCOMPARE(lines.at(0), QString("Application: LogTest (9.8.7)"));
    QCOMPARE(lines.at(1), "Installed at: " + QCoreApplication::applicationDirPath());
    QVERIFY(lines.at(2).startsWith("Date: "));
    QVERIFY(QDateTime::fromString(lines.at(2).mid(6), Qt::TextDate).isValid());
    QCOMPARE(lines.at(3), dashes);
    const int report_end = lines.indexOf(dashes, 4);
    QVERIFY(report_end > 3);
    for (int i = 4; i < report_end; ++i) // the network report sits between the dashes
        QVERIFY2(lines.at(i).startsWith("Interface: ") || lines.at(i).startsWith("\t"),
                 qPrintable(lines.at(i)));
    QCOMPARE(lines.at(report_end + 1), QString());
    QCOMPARE(text.mid(text.indexOf(dashes + "\n\n", 80) + 82),
             "main line\n\n\n" + dashes + "\nApplication: Second\nother line\n");
}

void tst_application_log::two_threads_write_whole_lines()
{
    const int lines = 2000;
    auto writer = [lines](const char *name) {
        for (int i = 0; i < lines; ++i)
            std::cout << "thread " << name << " line " << i << " end\n";
    };
    std::thread a(writer, "A");
    std::thread b(writer, "B");
    // The poll reads the capture while both threads write.
    log->window()->show();
    for (int i = 0; i < 20; ++i)
        log->poll();
    a.join();
    b.join();
    std::cout << std::flush;

    const QStringList got = received().split('\n', Qt::SkipEmptyParts);
    QCOMPARE(got.size(), 2 * lines);
    const QRegularExpression whole("^thread ([AB]) line (\\d+) end$");
    int next[2] = {0, 0};
    for (const QString &line : got) {
        const QRegularExpressionMatch m = whole.match(line);
        QVERIFY2(m.hasMatch(), qPrintable(line));
        int &expected = next[m.captured(1) == "A" ? 0 : 1];
        QCOMPARE(m.captured(2).toInt(), expected++); // each thread's lines in order
    }
}

void tst_application_log::tab_bar_only_with_second_tab()
{
    log->window()->show();
    QTabWidget *tabs = log->tab_widget();
    QCOMPARE(tabs->count(), 1);
    QVERIFY(!tabs->tabBar()->isVisible());
    log->add_data("Second", "x\n");
    QCOMPARE(tabs->count(), 2);
    QVERIFY(tabs->tabBar()->isVisible());
}

// Answers each message box that comes up with the button labelled `answer`,
// and records the titles in the order the boxes came.
class box_answerer : public QObject
{
public:
    box_answerer(const QString &answer)
        : answer_(answer)
    {
        connect(&timer_, &QTimer::timeout, this, [this] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            titles << box->windowTitle();
            for (QAbstractButton *button : box->buttons()) {
                if (button->text().remove('&') == answer_)
                    return button->click();
            }
            box->reject();
        });
        timer_.start(10);
    }
    QStringList titles;

private:
    QString answer_;
    QTimer timer_;
};

static QPushButton *button(QWidget *window, const QString &text)
{
    const auto buttons = window->findChildren<QPushButton *>();
    for (QPushButton *b : buttons) {
        if (b->text() == text)
            return b;
    }
    return nullptr;
}

void tst_application_log::clear_button_asks_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("cleared");
    QTest::addRow("yes clears") << "Yes" << true;
    QTest::addRow("no keeps") << "No" << false;
}

void tst_application_log::clear_button_asks()
{
    QFETCH(QString, answer);
    QFETCH(bool, cleared);

    std::cout << "kept or not\n" << std::flush;
    received();
    log->add_data("Second", "second tab text\n");
    box_answerer answerer(answer);
    QPushButton *clear = button(log->window(), "Clear log");
    QVERIFY(clear);
    clear->click();
    QCOMPARE(answerer.titles, QStringList({"Clear application logs"}));
    QCOMPARE(log->tab_text(app_tab).isEmpty(), cleared);
    QCOMPARE(log->tab_text("Second").isEmpty(), cleared);
    QCOMPARE(log->view("Second")->toPlainText().isEmpty(), cleared);
}

void tst_application_log::failed_save_warns_without_success_box()
{
    QTemporaryDir home;
    QVERIFY(home.isValid());
    const QByteArray old_home = qgetenv("HOME");
    const QByteArray old_config = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/.config").toUtf8());
    // A directory where the file should be makes the open fail, even for root.
    QVERIFY(QDir(home.path()).mkpath("Desktop"));
    const QString blocked = vn::application_log::log_file_name();
    QVERIFY(QDir().mkpath(blocked));

    received();
    box_answerer answerer("OK");
    button(log->window(), "Save to disk")->click();
    const QString second_name = vn::application_log::log_file_name();
    qputenv("HOME", old_home);
    qputenv("XDG_CONFIG_HOME", old_config);
    if (second_name != blocked)
        QSKIP("the clock passed a second boundary; the file name changed");
    QCOMPARE(answerer.titles, QStringList({"Failed to save application logs"}));
}

QTEST_MAIN(tst_application_log)
#include "tst_application_log.moc"
