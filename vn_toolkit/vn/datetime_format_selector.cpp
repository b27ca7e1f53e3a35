#include <vn/datetime_format_selector.h>

#include <vn/panel.h>
#include <vn/radio.h>

#include <QButtonGroup>
#include <QFont>
#include <QGridLayout>
#include <QLabel>
#include <QSettings>

namespace vn {

namespace {

const char *const date_key = "date_format";
const char *const time_key = "time_format";
const char *const default_date_format = "dd.MM.yyyy";
const char *const default_time_format = "HH:mm:ss";

} // namespace

datetime_format_selector::datetime_format_selector(QWidget *parent)
    : QWidget(parent)
{
    setStyleSheet(QStringLiteral("color: rgb(198,213,210);"));
    const QFont title_font(QStringLiteral("FreeSansBold"), 11, 75);

    auto *content = new QWidget;
    auto make = [content](const QString &text) {
        auto *button = new radio(text, content);
        button->spacing = 4;
        button->set_sheet();
        return button;
    };
    rb_ddmmyyyy_slash_ = make(tr("DD/MM/YYYY"));
    rb_ddmmyyyy_dot_ = make(tr("DD.MM.YYYY"));
    rb_ddmmyyyy_dash_ = make(tr("DD-MM-YYYY"));
    rb_yyyymmdd_slash_ = make(tr("YYYY/MM/DD"));
    rb_yyyymmdd_dot_ = make(tr("YYYY.MM.DD"));
    rb_yyyymmdd_dash_ = make(tr("YYYY-MM-DD"));
    rb_mmddyyyy_slash_ = make(tr("MM/DD/YYYY"));
    // The labels say "hh", the patterns "HH": Qt's 24-hour form.
    rb_hhmmss_ = make(tr("hh:mm:ss"));
    rb_hhmm_ = make(tr("hh:mm"));

    connect(rb_ddmmyyyy_slash_, &radio::clicked, this,
            &datetime_format_selector::on_rb_ddmmyyyy_slash_clicked);
    connect(rb_ddmmyyyy_dot_, &radio::clicked, this,
            &datetime_format_selector::on_rb_ddmmyyyy_dot_clicked);
    connect(rb_ddmmyyyy_dash_, &radio::clicked, this,
            &datetime_format_selector::on_rb_ddmmyyyy_dash_clicked);
    connect(rb_yyyymmdd_slash_, &radio::clicked, this,
            &datetime_format_selector::on_rb_yyyymmdd_slash_clicked);
    connect(rb_yyyymmdd_dot_, &radio::clicked, this,
            &datetime_format_selector::on_rb_yyyymmdd_dot_clicked);
    connect(rb_yyyymmdd_dash_, &radio::clicked, this,
            &datetime_format_selector::on_rb_yyyymmdd_dash_clicked);
    connect(rb_mmddyyyy_slash_, &radio::clicked, this,
            &datetime_format_selector::on_rb_mmddyyyy_slash_clicked);
    connect(rb_hhmmss_, &radio::clicked, this, &datetime_format_selector::on_rb_hhmmss_clicked);
    connect(rb_hhmm_, &radio::clicked, this, &datetime_format_selector::on_rb_hhmm_clicked);

    // Id 3 is left free between the day-first and year-first date forms.
    auto *date_group = new QButtonGroup(this);
    date_group->setExclusive(true);
    date_group->addButton(rb_ddmmyyyy_slash_, 0);
    date_group->addButton(rb_ddmmyyyy_dot_, 1);
    date_group->addButton(rb_ddmmyyyy_dash_, 2);
    date_group->addButton(rb_yyyymmdd_slash_, 4);
    date_group->addButton(rb_yyyymmdd_dot_, 5);
    date_group->addButton(rb_yyyymmdd_dash_, 6);
    date_group->addButton(rb_mmddyyyy_slash_, 7);
    auto *time_group = new QButtonGroup(this);
    time_group->setExclusive(true);
    time_group->addButton(rb_hhmmss_, 0);
    time_group->addButton(rb_hhmm_, 1);

    auto *grid = new QGridLayout(content);
    grid->setContentsMargins(20, 20, 20, 20);
    grid->setHorizontalSpacing(20);
    grid->setVerticalSpacing(10);
    auto *date_title = new QLabel(tr("Date Format"), content);
    date_title->setFont(title_font);
    auto *time_title = new QLabel(tr("Time Format"), content);
    time_title->setFont(title_font);
    grid->addWidget(date_title, 0, 0, 1, 2);
    grid->addWidget(time_title, 0, 2);
    grid->addWidget(rb_ddmmyyyy_slash_, 1, 0);
    grid->addWidget(rb_ddmmyyyy_dot_, 2, 0);
    grid->addWidget(rb_ddmmyyyy_dash_, 3, 0);
    grid->addWidget(rb_yyyymmdd_slash_, 1, 1);
    grid->addWidget(rb_yyyymmdd_dot_, 2, 1);
    grid->addWidget(rb_yyyymmdd_dash_, 3, 1);
    grid->addWidget(rb_mmddyyyy_slash_, 4, 1);
    grid->addWidget(rb_hhmmss_, 1, 2);
    grid->addWidget(rb_hhmm_, 2, 2);
    grid->addWidget(new QWidget(content), 4, 0);

    auto *outer = new QGridLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addWidget(new panel(content, this));

    const QSettings settings;
    date_format_ = settings.value(date_key, default_date_format).toString();
    time_format_ = settings.value(time_key, default_time_format).toString();
    // A stored pattern that no button offers leaves its group unchecked and
    // is kept as it is.
    const std::pair<radio *, const char *> rows[] = {
        {rb_ddmmyyyy_slash_, "dd/MM/yyyy"}, {rb_ddmmyyyy_dot_, "dd.MM.yyyy"},
        {rb_ddmmyyyy_dash_, "dd-MM-yyyy"},  {rb_yyyymmdd_slash_, "yyyy/MM/dd"},
        {rb_yyyymmdd_dot_, "yyyy.MM.dd"},   {rb_yyyymmdd_dash_, "yyyy-MM-dd"},
        {rb_mmddyyyy_slash_, "MM/dd/yyyy"}};
    for (const auto &row : rows)
        row.first->setChecked(date_format_ == QLatin1String(row.second));
    rb_hhmmss_->setChecked(time_format_ == QLatin1String("HH:mm:ss"));
    rb_hhmm_->setChecked(time_format_ == QLatin1String("HH:mm"));
}

datetime_format_selector::~datetime_format_selector() = default;

QString datetime_format_selector::datetime_format() const
{
    return QStringLiteral("%1 - %2").arg(date_format_, time_format_);
}

void datetime_format_selector::set_date_format(const QString &format)
{
    date_format_ = format;
    store_and_announce();
}

void datetime_format_selector::set_time_format(const QString &format)
{
    time_format_ = format;
    store_and_announce();
}

void datetime_format_selector::store_and_announce()
{
    QSettings settings;
    settings.setValue(date_key, date_format_);
    settings.setValue(time_key, time_format_);
    emit format_changed(datetime_format());
}

void datetime_format_selector::on_rb_ddmmyyyy_slash_clicked()
{
    set_date_format(QStringLiteral("dd/MM/yyyy"));
}

void datetime_format_selector::on_rb_ddmmyyyy_dot_clicked()
{
    set_date_format(QStringLiteral("dd.MM.yyyy"));
}

void datetime_format_selector::on_rb_ddmmyyyy_dash_clicked()
{
    set_date_format(QStringLiteral("dd-MM-yyyy"));
}

void datetime_format_selector::on_rb_yyyymmdd_slash_clicked()
{
    set_date_format(QStringLiteral("yyyy/MM/dd"));
}

void datetime_format_selector::on_rb_yyyymmdd_dot_clicked()
{
    set_date_format(QStringLiteral("yyyy.MM.dd"));
}

void datetime_format_selector::on_rb_yyyymmdd_dash_clicked()
{
    set_date_format(QStringLiteral("yyyy-MM-dd"));
}

void datetime_format_selector::on_rb_mmddyyyy_slash_clicked()
{
    set_date_format(QStringLiteral("MM/dd/yyyy"));
}

void datetime_format_selector::on_rb_hhmmss_clicked()
{
    set_time_format(QStringLiteral("HH:mm:ss"));
}

void datetime_format_selector::on_rb_hhmm_clicked()
{
    set_time_format(QStringLiteral("HH:mm"));
}

} // namespace vn
