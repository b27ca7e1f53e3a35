#pragma once

#include <QString>
#include <Qt>

#include <map>
#include <string>

QT_BEGIN_NAMESPACE
class QAbstractScrollArea;
class QWidget;
QT_END_NAMESPACE

namespace vn::qt {

// The tooltip rule that every themed widget appends to its own sheet: the dark
// surface with a grey border instead of the system's tooltip colours.
inline constexpr char tooltip_style[] =
    "QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
    "background-color:rgb(47,47,47);}";

// A widget's style sheet held as data: selector -> property -> value, both
// maps ordered by byte-wise comparison. The plain declarations of a widget sit
// under the empty selector.
//
// Parsing knows declarations only, not blocks: "a:1;b:2;a:3" holds a=3 and
// b=2, and a sheet with "QToolTip{...}" blocks does not survive a round trip.
// Written out, the sheet comes sorted by property whatever order it was
// written in: stylesheet("b:2;a:1").text() == "a:1;b:2;". GUI thread only
// where a widget is involved.
class stylesheet
{
public:
    using declarations = std::map<std::string, std::string>;

    stylesheet();
    explicit stylesheet(const QString &text);

    // Adds the declarations of text under the empty selector. A piece without
    // a colon, or with an empty property or value, is dropped; a later
    // declaration of a property replaces the earlier one. Blanks are kept.
    void set(const std::string &text);

    std::string text() const;
    void apply(QWidget *widget) const;

    const std::map<std::string, declarations> &selectors() const { return selectors_; }

private:
    std::map<std::string, declarations> selectors_;
};

// Merges declarations into the widget's sheet text, keeping its order: a
// property already in the sheet has its declaration replaced in place, a new
// one is appended. Meeting a declaration that already stands in the sheet word
// for word ends the merge without applying anything, not even what earlier
// declarations of text changed. The property is found by plain text search,
// so "border:" also matches inside "top-border:"; pass short, known
// declarations only.
// merge_style_sheet(w, "margin:1px") on "color:red;" gives "color:red;margin:1px;"
void merge_style_sheet(QWidget *widget, QString text);

// The four rules of the flat black scroll bar of one orientation, one a line.
QString scroll_bar_style_sheet(Qt::Orientation orientation);

// Gives both scroll bars of area a fusion style of their own (owned by area)
// and the flat black scroll bar sheets. GUI thread only.
void style_scroll_bars(QAbstractScrollArea *area);

} // namespace vn::qt
