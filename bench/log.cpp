// Measures the application log with a large text: one refilter, and the poll
// that brings 10,000 new lines into a visible window, with and without a
// filter. Targets: refilter <= 100 ms, unfiltered poll <= 50 ms.
// Run offscreen with stdout discarded; the figures go to stderr:
//   QT_QPA_PLATFORM=offscreen ./log > /dev/null
#include <vn/application_log.h>

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextDocument>

#include <cstdio>
#include <functional>
#include <iostream>

namespace {

const int total_lines = 200000;
const int new_lines = 10000;

// Every hundredth line holds "needle", so a filter on it keeps 1 %.
QString make_lines(int count, int first)
{
    QString text;
    text.reserve(count * 64);
    for (int i = first; i < first + count; ++i) {
        text += QStringLiteral("Debug: void vn::worker::step(): line %1 of the log %2\n")
                    .arg(i)
                    .arg(i % 100 == 0 ? QStringLiteral("needle") : QStringLiteral("hay"));
    }
    return text;
}

double time_ms(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

void write_to_stdout(int count, int first)
{
    const QByteArray text = make_lines(count, first).toUtf8();
    std::cout.write(text.constData(), text.size());
    std::cout.flush();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("LogBench"));
    vn::application_log *log = vn::application_log::create(&app);
    const QString tab = QCoreApplication::applicationName();

    log->window()->show();
    QCoreApplication::processEvents();
    log->add_data(tab, make_lines(total_lines, 0));
    QCoreApplication::processEvents();

    QString kept;
    const double filter_only = time_ms([&] {
        kept = vn::application_log::filtered_text(log->tab_text(tab), QStringLiteral("needle"));
    });
    std::fprintf(stderr, "filter: text of %d lines filtered (no view): %.1f ms, %d lines kept\n",
                 total_lines, filter_only, int(kept.count(QLatin1Char('\n'))));

    const double refilter = time_ms([&] { log->filter_edit()->setText(QStringLiteral("needle")); });
    std::fprintf(stderr, "filter: refilter of %d lines keeping 1 %%: %.1f ms (target <= 100)\n",
                 total_lines, refilter);

    const double unfilter = time_ms([&] { log->filter_edit()->clear(); });
    std::fprintf(stderr, "filter cleared: whole log of %d lines shown again: %.1f ms\n",
                 total_lines, unfilter);

    // Asking for the last line's place makes a view lay out what it defers.
    // Timed on its own, so that a view that lays out the whole text shows
    // here and not inside the poll below.
    QTextDocument *document = log->view(tab)->document();
    const double layout =
        time_ms([&] { document->documentLayout()->blockBoundingRect(document->lastBlock()); });
    std::fprintf(stderr, "layout of the rebuilt view, once: %.1f ms\n", layout);

    write_to_stdout(new_lines, total_lines);
    const double poll_plain = time_ms([&] { log->poll(); });
    std::fprintf(stderr, "poll: %d new lines, empty filter: %.1f ms (target <= 50)\n", new_lines,
                 poll_plain);

    log->filter_edit()->setText(QStringLiteral("needle"));
    write_to_stdout(new_lines, total_lines + new_lines);
    const double poll_filtered = time_ms([&] { log->poll(); });
    std::fprintf(stderr, "poll: %d new lines, filter keeping 1 %%: %.1f ms\n", new_lines,
                 poll_filtered);

    const int expected = total_lines + 2 * new_lines;
    const int got = log->tab_text(tab).count(QLatin1Char('\n'));
    std::fprintf(stderr, "lines in the log: %d of %d\n", got, expected);
    return got == expected ? 0 : 1;
}
