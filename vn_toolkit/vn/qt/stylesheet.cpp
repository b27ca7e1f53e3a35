#include "stylesheet.h"

#include <vn/array.h>

#include <QAbstractScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

#include <functional>

namespace vn::qt {

namespace {

// Calls piece for each run of text between separators, the last run included
// even when empty. The ranges point into text and are valid during the call.
void split(const std::string &text, char separator,
           const std::function<void(const vn::array<const char> &)> &piece)
{
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = text.find(separator, start);
        const std::size_t stop = end == std::string::npos ? text.size() : end;
        piece(vn::array<const char>(text.data() + start, stop - start));
        if (end == std::string::npos)
            return;
        start = end + 1;
    }
}

} // namespace

stylesheet::stylesheet()
{
    selectors_[std::string()];
}

stylesheet::stylesheet(const QString &text)
    : stylesheet()
{
    set(text.toStdString());
}

void stylesheet::set(const std::string &text)
{
    declarations &plain = selectors_[std::string()];
    split(text, ';', [&plain](const vn::array<const char> &piece) {
        const std::string declaration(piece.data(), piece.size());
        const std::size_t colon = declaration.find(':');
        if (colon == std::string::npos)
            return;
        std::string property = declaration.substr(0, colon);
        std::string value = declaration.substr(colon + 1);
        if (property.empty() || value.empty())
            return;
        plain[std::move(property)] = std::move(value);
    });
}

std::string stylesheet::text() const
{
    std::string out;
    for (const auto &[selector, properties] : selectors_) {
        if (properties.empty())
            continue;
        if (!selector.empty())
            out += selector + '{';
        for (const auto &[property, value] : properties)
            out += property + ':' + value + ';';
        if (!selector.empty())
            out += "}\n";
    }
    return out;
}

void stylesheet::apply(QWidget *widget) const
{
    if (!widget) {
        qWarning("%s: No widget to apply the style sheet to.", Q_FUNC_INFO);
        return;
    }
    widget->setStyleSheet(QString::fromStdString(text()));
}

void merge_style_sheet(QWidget *widget, QString text)
{
    if (!widget) {
        qWarning("%s: No widget to merge the style sheet into.", Q_FUNC_INFO);
        return;
    }
    if (text.isEmpty())
        return;
    if (!text.endsWith(QLatin1Char(';')))
        text += QLatin1Char(';');

    QString sheet = widget->styleSheet();
    int position = 0;
    while (position < text.size()) {
        const int end = text.indexOf(QLatin1Char(';'), position); // text ends with ';'
        const QString declaration = text.mid(position, end - position + 1);
        position = end + 1;
        const int colon = declaration.indexOf(QLatin1Char(':'));
        if (colon < 0) {
            qWarning("%s: Skipping \"%s\": it has no property.", Q_FUNC_INFO,
                     qUtf8Printable(declaration));
            continue;
        }
        const QString property = declaration.left(colon + 1);
        const int match = sheet.indexOf(property);
        if (match < 0) {
            sheet += declaration;
            continue;
        }
        const int match_end = sheet.indexOf(QLatin1Char(';'), match);
        const int length = match_end < 0 ? sheet.size() - match : match_end - match + 1;
        if (sheet.midRef(match, length) == declaration)
            return; // the sheet already says this: nothing is applied
        sheet.replace(match, length, declaration);
    }
    widget->setStyleSheet(sheet);
}

QString scroll_bar_style_sheet(Qt::Orientation orientation)
{
    if (orientation == Qt::Vertical) {
        return QStringLiteral(
            "QScrollBar:vertical {    border: none;    background-color:rgb(47,47,47);    "
            "width:11px;        margin: 0px 0px 0px 0px;}\n"
            "QScrollBar::handle:vertical {    border: 1px solid black;    border-radius: 5px;    "
            "background: rgb(0,0,0);    min-height: 20px;}\n"
            "QScrollBar::add-line:vertical {    background: black;    height: 0px;    "
            "subcontrol-position: bottom;    subcontrol-origin: margin;}\n"
            "QScrollBar::sub-line:vertical {    background: black;    height: 0px;    "
            "subcontrol-position: top;    subcontrol-origin: margin;}\n");
    }
    return QStringLiteral(
        "QScrollBar:horizontal {    border: none;    background-color:rgb(47,47,47);    "
        "height:11px;        margin: 0px 0px 0px 0px;}\n"
        "QScrollBar::handle:horizontal {    border: 1px solid black;    border-radius: 5px;    "
        "background: rgb(0,0,0);    min-width: 20px;}\n"
        "QScrollBar::add-line:horizontal {    background: black;    width: 0px;    "
        "subcontrol-position: left;    subcontrol-origin: margin;}\n"
        "QScrollBar::sub-line:horizontal {    background: black;    width: 0px;    "
        "subcontrol-position: right;    subcontrol-origin: margin;}\n");
}

void style_scroll_bars(QAbstractScrollArea *area)
{
    if (!area) {
        qWarning("%s: No scroll area to style.", Q_FUNC_INFO);
        return;
    }
    QStyle *fusion = QStyleFactory::create(QStringLiteral("fusion"));
    if (!fusion) {
        qWarning("%s: The fusion style is missing; the scroll bars keep the system style.",
                 Q_FUNC_INFO);
    } else {
        fusion->setParent(area);
        area->verticalScrollBar()->setStyle(fusion);
        area->horizontalScrollBar()->setStyle(fusion);
    }
    area->verticalScrollBar()->setStyleSheet(scroll_bar_style_sheet(Qt::Vertical));
    area->horizontalScrollBar()->setStyleSheet(scroll_bar_style_sheet(Qt::Horizontal));
}

} // namespace vn::qt
