#pragma once

#include <QString>
#include <QWidget>

namespace vn {

class radio;

// Settings block that chooses how dates and times are written, as two
// groups of radio buttons. The choice is kept in the default QSettings under
// "date_format" and "time_format" (QDateTime patterns) and announced on each
// click as one joined pattern. Construction reads the settings and emits
// nothing. GUI thread only.
class datetime_format_selector : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(datetime_format_selector)

public:
    explicit datetime_format_selector(QWidget *parent = nullptr);
    ~datetime_format_selector() override;

    QString date_format() const { return date_format_; }
    QString time_format() const { return time_format_; }
    // datetime_format() == "dd.MM.yyyy - HH:mm:ss" with the defaults
    QString datetime_format() const;

signals:
    void format_changed(QString datetime_format); // after a click, settings written

private slots:
    void on_rb_ddmmyyyy_slash_clicked();
    void on_rb_ddmmyyyy_dot_clicked();
    void on_rb_ddmmyyyy_dash_clicked();
    void on_rb_yyyymmdd_slash_clicked();
    void on_rb_yyyymmdd_dot_clicked();
    void on_rb_yyyymmdd_dash_clicked();
    void on_rb_mmddyyyy_slash_clicked();
    void on_rb_hhmmss_clicked();
    void on_rb_hhmm_clicked();

private:
    void set_date_format(const QString &format);
    void set_time_format(const QString &format);
    void store_and_announce();

    QString date_format_;
    QString time_format_;
    radio *rb_ddmmyyyy_slash_ = nullptr;
    radio *rb_ddmmyyyy_dot_ = nullptr;
    radio *rb_ddmmyyyy_dash_ = nullptr;
    radio *rb_yyyymmdd_slash_ = nullptr;
    radio *rb_yyyymmdd_dot_ = nullptr;
    radio *rb_yyyymmdd_dash_ = nullptr;
    radio *rb_mmddyyyy_slash_ = nullptr;
    radio *rb_hhmmss_ = nullptr;
    radio *rb_hhmm_ = nullptr;
};

} // namespace vn
