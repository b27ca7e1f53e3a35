#include "modal_watcher.h"
#include <vn/application_log.h>
#include <vn/message_handler.h>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

#include <iostream>
#include <thread>

namespace {
// Points HOME and XDG_CONFIG_HOME at a fresh folder while alive.
struct temporary_home
{
    QTemporaryDir dir;
    const QByteArray old_home = qgetenv("HOME");
    const QByteArray old_config = qgetenv("XDG_CONFIG_HOME");
    temporary_home()
    {
        qputenv("HOME", dir.path().toUtf8());
        qputenv("XDG_CONFIG_HOME", (dir.path() + "/.config").toUtf8());
    }
    ~temporary_home()
    {
        qputenv("HOME", old_home);
        qputenv("XDG_CONFIG_HOME", old_config);
    }
};

// Clicks the log window's button `text` and answers each box that comes up
// with `answer`; the titles of the boxes, in order.
QStringList click_and_answer(QWidget *window, const QString &text, const QString &answer)
{
    QStringList titles;
    modal_watcher watcher([&](QWidget *box) {
        titles << box->windowTitle();
        if (!modal_watcher::click(box, answer))
            box->close();
    });
    for (QPushButton *button : window->findChildren<QPushButton *>())
        if (button->text() == text)
            button->click();
    return titles;
}
} // namespace

// One log per process: the streams can be tapped only once. cleanup() brings
// it back to an empty, hidden state.
class tst_application_log : public QObject
{
    Q_OBJECT

    vn::application_log *log = nullptr;
    const QString app_tab = QStringLiteral("LogTest");

    // Shows the window and takes what the next poll brings.
    QString received()
    {
        log->window()->show();
        log->poll();
        return log->tab_text(app_tab);
    }

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(app_tab);
        QCoreApplication::setApplicationVersion("9.8.7");
        log = vn::application_log::create(qApp);
        QVERIFY(log);
        QCOMPARE(vn::application_log::create(qApp), log);
        for (const QString name : {"probe", "probe-long"})
            log->add_command(name, [name](const QString &arg) {
                std::cout << name.toStdString() << " got [" << arg.toStdString() << "]"
                          << std::endl;
            });
        log->add_command(
            "secret", [](const QString &) {}, true);
    }

    void cleanup()
    {
        received();
        log->filter_edit()->clear();
        log->clear_logs();
        log->window()->hide();
    }

    void hidden_window_text_arrives_after_show()
    {
        log->window()->hide();
        std::cout << "first while hidden\n";
        std::cerr << "second while hidden" << std::endl;
        log->poll();
        QCOMPARE(log->tab_text(app_tab), QString());

        log->window()->show();
        QVERIFY(!log->tab_widget()->tabBar()->isVisible()); // one tab, no bar
        // The timer's first poll brings both lines at once.
        QTRY_COMPARE(log->tab_text(app_tab), QString("first while hidden\nsecond while hidden\n"));
        QCOMPARE(log->view(app_tab)->toPlainText(), log->tab_text(app_tab));
    }

    // Qt's messages reach the streams through the message handler, and from
    // there the log.
    void qt_messages_land_in_log()
    {
        const QtMessageHandler previous = qInstallMessageHandler(nullptr);
        vn::install_message_handler();
        qDebug("from qDebug");
        qCritical("from qCritical");
        qInstallMessageHandler(previous);
        QCOMPARE(received(), QString("Debug: from qDebug\nCritical: from qCritical\n"));
    }

    void filtered_text_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QString>("expected");
        const char *rows[][3] = {
            {"a\n\nb", "", "a\n\nb"},          // empty filter: the text as it is
            {"ab\n\nc\nab", "a", "ab\nab\n"},  // empty lines dropped, last gets a line feed
            {"xaxa\nb\n", "a", "xaxa\n"},      // two hits on one line, kept once
            {"a\nb\n", "a\nb", ""},            // a line feed in the filter matches nothing
            {"ab\nabc\n", "abc", "abc\n"},     // filter longer than a line
            {"ÄRGER\nok\n", "ärg", "ÄRGER\n"}, // case of umlauts
        };
        for (const auto &row : rows)
            QTest::addRow("row %d", int(&row - rows))
                << QString::fromUtf8(row[0]) << QString::fromUtf8(row[1])
                << QString::fromUtf8(row[2]);
    }

    void filtered_text()
    {
        QFETCH(QString, text);
        QFETCH(QString, filter);
        QFETCH(QString, expected);
        QCOMPARE(vn::application_log::filtered_text(text, filter), expected);
    }

    void filter_keeps_lines()
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

    void commands_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("box_after");
        // Hidden commands stay out of the list.
        const char *rows[][3] = {
            {"HELP", "List of commands:\n    help\n    probe\n    probe-long\n", ""},
            {"PROBE Some Arg", "probe got [ Some Arg]\n", ""}, // the argument keeps its case
            {"probe-longX", "probe-long got [X]\n", ""},       // the longest key wins
            {"hel", "", "hel"},                                // a key's prefix stays a filter
        };
        for (const auto &row : rows)
            QTest::newRow(row[0]) << row[0] << row[1] << row[2];
    }

    void commands()
    {
        QFETCH(QString, typed);
        QFETCH(QString, output);
        QFETCH(QString, box_after);
        received();
        log->filter_edit()->setText(typed);
        QTest::keyClick(log->filter_edit(), Qt::Key_Return);
        QCOMPARE(log->filter_edit()->text(), box_after);
        QCOMPARE(received(), output);
    }

    void save_format_data()
    {
        QTest::addColumn<bool>("desktop_exists");
        QTest::addRow("to the desktop") << true;
        QTest::addRow("desktop missing, to home") << false;
    }

    void save_format()
    {
        QFETCH(bool, desktop_exists);
        temporary_home home;
        if (desktop_exists)
            QVERIFY(QDir(home.dir.path()).mkpath("Desktop"));

        std::cout << "main line\n" << std::flush;
        received();
        log->add_data("Second", "other line\n");
        QVERIFY(log->tab_widget()->tabBar()->isVisible());

        const qint64 before = QDateTime::currentSecsSinceEpoch();
        const QString name = log->save_log();
        const qint64 after = QDateTime::currentSecsSinceEpoch();
        const QString folder = home.dir.path() + (desktop_exists ? "/Desktop" : "");
        const QRegularExpressionMatch match =
            QRegularExpression("^" + QRegularExpression::escape(folder) +
                               "/LogTest Log (\\d+)\\.log$")
                .match(name);
        QVERIFY2(match.hasMatch(), qPrintable(name));
        QVERIFY(match.captured(1).toLongLong() >= before &&
                match.captured(1).toLongLong() <= after);

        QFile file(name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        const QString dashes(80, '-');
        const QStringList lines = text.split('\n');
        QCOMPARE(lines.at(0), QString("Application: LogTest (9.8.7)"));
        QCOMPARE(lines.at(1), "Installed at: " + QCoreApplication::applicationDirPath());
        QVERIFY(QDateTime::fromString(lines.at(2).mid(6), Qt::TextDate).isValid());
        QCOMPARE(lines.at(2).left(6), QString("Date: "));
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

    void two_threads_write_whole_lines()
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
            QCOMPARE(m.captured(2).toInt(), next[m.captured(1) == "B"]++); // in order per thread
        }
    }

    void clear_button_asks_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addRow("yes clears") << "Yes";
        QTest::addRow("no keeps") << "No";
    }

    void clear_button_asks()
    {
        QFETCH(QString, answer);
        std::cout << "kept or not\n" << std::flush;
        received();
        log->add_data("Second", "second tab text\n");
        QCOMPARE(click_and_answer(log->window(), "Clear log", answer),
                 QStringList{"Clear application logs"});
        const bool cleared = answer == "Yes";
        QCOMPARE(log->tab_text(app_tab).isEmpty(), cleared);
        QCOMPARE(log->tab_text("Second").isEmpty(), cleared);
        QCOMPARE(log->view("Second")->toPlainText().isEmpty(), cleared);
    }

    void failed_save_warns_without_success_box()
    {
        temporary_home home;
        // A directory where the file should be makes the open fail, even for root.
        QVERIFY(QDir(home.dir.path()).mkpath("Desktop"));
        const QString blocked = vn::application_log::log_file_name();
        QVERIFY(QDir().mkpath(blocked));
        received();
        const QStringList titles = click_and_answer(log->window(), "Save to disk", "OK");
        if (vn::application_log::log_file_name() != blocked)
            QSKIP("the clock passed a second boundary; the file name changed");
        QCOMPARE(titles, QStringList{"Failed to save application logs"});
    }
};

QTEST_MAIN(tst_application_log)
#include "tst_application_log.moc"
