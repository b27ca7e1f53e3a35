#include "vn/application_log.h"

#include <vn/diagnostics.h>
#include <vn/message_box.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QGridLayout>
#include <QIcon>
#include <QLineEdit>
#include <QPlainTextDocumentLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QVector>

#include <iostream>

namespace vn {

namespace {

application_log *the_log = nullptr;

// The streams can be tapped once per process: a second tap would copy every
// line twice.
bool streams_tapped = false;

const QString dashes(80, QLatin1Char('-'));

} // namespace

application_log *application_log::create(QObject *parent)
{
    if (!the_log) {
        the_log = new application_log(parent);
        the_log->install();
    }
    return the_log;
}

application_log *application_log::instance()
{
    return the_log;
}

application_log::application_log(QObject *parent)
    : QObject(parent)
{
    window_ = new QWidget(nullptr);
    window_->resize(800, 300);
    window_->setWindowTitle(tr("Application Log"));
    window_->setAttribute(Qt::WA_QuitOnClose, false);

    auto *layout = new QGridLayout(window_);
    filter_edit_ = new QLineEdit(window_);
    filter_edit_->setPlaceholderText(tr("Filter..."));
    filter_edit_->setClearButtonEnabled(true);
    save_button_ = new QPushButton(QIcon::fromTheme(QStringLiteral("document-save")),
                                   tr("Save to disk"), window_);
    clear_button_ =
        new QPushButton(QIcon::fromTheme(QStringLiteral("edit-delete")), tr("Clear log"), window_);
    network_button_ = new QPushButton(tr("Network report"), window_);
    tab_widget_ = new QTabWidget(window_);
    tab_widget_->setTabBarAutoHide(true);
    layout->addWidget(filter_edit_, 0, 0);
    layout->addWidget(save_button_, 0, 2);
    layout->addWidget(clear_button_, 0, 3);
    layout->addWidget(network_button_, 0, 4);
    layout->addWidget(tab_widget_, 1, 0, 1, 5);

    tab(QCoreApplication::applicationName());

    connect(filter_edit_, &QLineEdit::textChanged, this,
            [this] { refilter(tab_widget_->currentIndex()); });
    connect(tab_widget_, &QTabWidget::currentChanged, this, &application_log::refilter);
    connect(filter_edit_, &QLineEdit::returnPressed, this, &application_log::run_command);
    connect(save_button_, &QPushButton::clicked, this, &application_log::on_save_button_clicked);
    connect(clear_button_, &QPushButton::clicked, this, &application_log::on_clear_button_clicked);
    connect(network_button_, &QPushButton::clicked, this,
            &application_log::on_network_button_clicked);
    connect(&poll_timer_, &QTimer::timeout, this, &application_log::poll);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] {
        poll_timer_.stop();
        delete window_;
        window_ = nullptr;
    });
    poll_timer_.setInterval(100);
    poll_timer_.start();
}

application_log::~application_log()
{
    if (installed_) {
        // Streams first: nothing may reach `capture` once it is gone.
        cout_copy_.reset();
        cerr_copy_.reset();
        streams_tapped = false;
    }
    poll_timer_.stop();
    // Widgets can only go while the application object exists. When the log
    // dies as the application's child, QCoreApplication::instance() is
    // already null and the process ends right after; aboutToQuit has taken
    // the window away in a normal run.
    if (QCoreApplication::instance())
        delete window_;
    if (the_log == this)
        the_log = nullptr;
}

void application_log::install()
{
    if (streams_tapped || installed_)
        return;
    streams_tapped = true;
    installed_ = true;
    cout_copy_ = std::make_unique<copy_streambuf<char, std::char_traits<char>>>(std::cout, capture_,
                                                                                capture_lock_);
    cerr_copy_ = std::make_unique<copy_streambuf<char, std::char_traits<char>>>(std::cerr, capture_,
                                                                                capture_lock_);

    add_command(QStringLiteral("help"), [this](const QString &) {
        std::string list = "List of commands:\n";
        for (const auto &command : commands_) {
            if (!command.second.hidden)
                list += "    " + command.first.toStdString() + "\n";
        }
        std::cout << list << std::flush;
    });
}

void application_log::add_command(const QString &name, std::function<void(const QString &)> handler,
                                  bool hidden)
{
    commands_[name.toLower()] = log_command{std::move(handler), hidden};
}

application_log::log_tab &application_log::tab(const QString &name)
{
    auto it = tabs_.find(name);
    if (it != tabs_.end())
        return it.value();
    log_tab &entry = tabs_[name];
    entry.name = name;
    entry.view = new QPlainTextEdit(window_);
    entry.view->setReadOnly(true);
    // Two documents per view, both owned by the view (not by its text
    // control, which would delete a document it lets go): the whole log,
    // kept while a filter is set, and the filtered lines. Switching between
    // them spares rebuilding and tearing down the whole log on every change
    // of the filter.
    entry.full_document = new_log_document(entry.view);
    entry.filtered_document = new_log_document(entry.view);
    entry.view->setDocument(entry.full_document);
    entry.index = tab_widget_->addTab(entry.view, name);
    return entry;
}

QTextDocument *application_log::new_log_document(QPlainTextEdit *view)
{
    auto *document = new QTextDocument(view);
    document->setDocumentLayout(new QPlainTextDocumentLayout(document));
    document->setDefaultFont(view->font());
    // A log is never edited: an undo history would only double its memory.
    document->setUndoRedoEnabled(false);
    return document;
}

void application_log::append_plain(QTextDocument *document, const QString &data)
{
    // Inserted at the very end, so that the view shows exactly `text`;
    // appendPlainText() would start a new paragraph and add a blank line.
    // The edit block is opened before the cursor moves: a cursor moved
    // outside one asks the layout for its x position at once. Inside, the
    // view is told of all new lines in one change.
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(data);
    cursor.endEditBlock();
}

void application_log::show_filtered(log_tab &entry, const QString &filter)
{
    if (filter.isEmpty()) {
        if (!entry.pending.isEmpty()) {
            append_plain(entry.full_document, entry.pending);
            entry.pending.clear();
        }
        if (entry.view->document() != entry.full_document)
            entry.view->setDocument(entry.full_document);
        return;
    }
    entry.filtered_document->setPlainText(filtered_text(entry.text, filter));
    if (entry.view->document() != entry.filtered_document)
        entry.view->setDocument(entry.filtered_document);
}

QString application_log::filtered_text(const QString &text, const QString &filter)
{
    if (filter.isEmpty())
        return text;
    QString result;
    if (filter.contains(QLatin1Char('\n'))) // no line can hold a line feed
        return result;
    // One case-insensitive search through the whole text, taking the line
    // around each hit, is several times faster than splitting into lines and
    // testing each; the lines kept are the same.
    int from = 0;
    while (from < text.size()) {
        const int hit = text.indexOf(filter, from, Qt::CaseInsensitive);
        if (hit < 0)
            break;
        const int start = hit == 0 ? 0 : text.lastIndexOf(QLatin1Char('\n'), hit - 1) + 1;
        int end = text.indexOf(QLatin1Char('\n'), hit + filter.size());
        if (end < 0)
            end = text.size();
        result += QStringView(text).mid(start, end - start);
        result += QLatin1Char('\n');
        from = end + 1;
    }
    return result;
}

QString application_log::tab_text(const QString &name) const
{
    return tabs_.value(name).text;
}

QPlainTextEdit *application_log::view(const QString &name) const
{
    return tabs_.value(name).view;
}

void application_log::scroll_to_end(QPlainTextEdit *view)
{
    QScrollBar *bar = view->verticalScrollBar();
    bar->setValue(bar->maximum());
}

void application_log::append_to_tab(log_tab &entry, const QString &data)
{
    entry.text += data;
    const QString filter = filter_edit_->text();
    if (filter.isEmpty() && entry.pending.isEmpty() &&
        entry.view->document() == entry.full_document) {
        append_plain(entry.full_document, data);
    } else {
        // The whole-log document catches up when the filter is cleared.
        entry.pending += data;
        show_filtered(entry, filter);
    }
    if (!entry.view->hasFocus())
        scroll_to_end(entry.view);
}

void application_log::poll()
{
    if (!window_ || !window_->isVisible())
        return;
    std::string taken;
    {
        QMutexLocker lock(&capture_lock_);
        taken = capture_.str();
        capture_.str(std::string());
    }
    if (taken.empty())
        return;
    append_to_tab(tab(QCoreApplication::applicationName()),
                  QString::fromUtf8(taken.data(), int(taken.size())));
}

void application_log::add_data(const QString &name, const QString &data)
{
    if (!window_) // the application is quitting; the views are gone
        return;
    append_to_tab(tab(name), data);
}

void application_log::refilter(int index)
{
    if (index < 0)
        return;
    log_tab &entry = tab(tab_widget_->tabText(index));
    show_filtered(entry, filter_edit_->text());
    scroll_to_end(entry.view);
}

void application_log::run_command()
{
    if (tab_widget_->currentIndex() < 0)
        return;
    const QString typed = filter_edit_->text();
    const QString lower = typed.toLower();
    const std::pair<const QString, log_command> *best = nullptr;
    for (const auto &command : commands_) {
        if (lower.startsWith(command.first) && (!best || command.first.size() > best->first.size()))
            best = &command;
    }
    if (!best)
        return;
    const auto handler = best->second.handler;
    const QString argument = typed.mid(best->first.size());
    filter_edit_->clear();
    handler(argument);
}

void application_log::open_log_window()
{
    if (!window_)
        return;
    if (window_->isVisible()) {
        window_->raise();
        window_->activateWindow();
    } else {
        window_->show();
    }
}

QString application_log::log_file_name()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    if (folder.isEmpty() || !QDir(folder).exists())
        folder = QDir::homePath();
    return folder + QLatin1Char('/') + QCoreApplication::applicationName() +
           QStringLiteral(" Log ") + QString::number(QDateTime::currentSecsSinceEpoch()) +
           QStringLiteral(".log");
}

QString application_log::log_file_text() const
{
    const QString app_name = QCoreApplication::applicationName();
    QString text;
    text += QStringLiteral("Application: ") + app_name + QStringLiteral(" (") +
            QCoreApplication::applicationVersion() + QStringLiteral(")\n");
    text += QStringLiteral("Installed at: ") + QCoreApplication::applicationDirPath() +
            QStringLiteral("\n");
    text += QStringLiteral("Date: ") + QDateTime::currentDateTime().toString(Qt::TextDate) +
            QStringLiteral("\n");
    text += dashes + QStringLiteral("\n");
    text += network_report();
    text += dashes + QStringLiteral("\n\n");
    text += tabs_.value(app_name).text;
    for (auto it = tabs_.cbegin(); it != tabs_.cend(); ++it) {
        if (it.key() == app_name)
            continue;
        text += QStringLiteral("\n\n") + dashes + QStringLiteral("\nApplication: ") + it.key() +
                QStringLiteral("\n") + it.value().text;
    }
    return text;
}

QString application_log::save_log()
{
    const QString file_name = log_file_name();
    const QByteArray bytes = log_file_text().toUtf8();

    QFile file(file_name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        message_box::warning(window_, tr("Failed to save application logs"),
                             tr("Can't save the application logs to\n%1\n\nYou might not have "
                                "write permission or the disk might be full.")
                                 .arg(file_name),
                             QMessageBox::Ok);
        return QString();
    }
    const qint64 written = file.write(bytes);
    if (written < bytes.size()) {
        message_box::warning(window_, tr("Failed to save application logs"),
                             tr("Failed to write the complete application logs to\n%1\n\nCould "
                                "only write %2/%3 bytes. The disk might be full.")
                                 .arg(file_name)
                                 .arg(qMax<qint64>(written, 0))
                                 .arg(bytes.size()),
                             QMessageBox::Ok);
        return QString();
    }
    if (!file.flush())
        qDebug("Failed to flush logfile QFile instance.");
    file.close();
    return file_name;
}

void application_log::clear_logs()
{
    for (log_tab &entry : tabs_) {
        entry.text.clear();
        entry.pending.clear();
        entry.full_document->clear();
        entry.filtered_document->clear();
    }
}

void application_log::on_save_button_clicked()
{
    const QString file_name = save_log();
    if (file_name.isEmpty())
        return;
    message_box::information(window_, tr("Application logs saved"),
                             tr("The application logs were saved to\n%1").arg(file_name),
                             QMessageBox::Ok);
}

void application_log::on_clear_button_clicked()
{
    const auto answer = message_box::question(
        window_, tr("Clear application logs"),
        tr("Do you really want to clear the application logs?"),
        QMessageBox::StandardButtons(QMessageBox::Yes | QMessageBox::No), QMessageBox::NoButton);
    if (answer == QMessageBox::Yes)
        clear_logs();
}

void application_log::on_network_button_clicked()
{
    auto *report = new QTextEdit(nullptr);
    report->setWindowTitle(tr("Network report"));
    report->setReadOnly(true);
    report->setWindowModality(Qt::ApplicationModal);
    report->setAttribute(Qt::WA_DeleteOnClose, true);
    report->setLineWrapMode(QTextEdit::NoWrap);
    QFont font = report->font();
    font.setFamily(QStringLiteral("monospace"));
    report->setFont(font);
    report->setPlainText(network_report());
    report->setMinimumSize(report->sizeHint());
    report->show();
}

} // namespace vn
