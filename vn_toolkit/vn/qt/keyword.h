#pragma once

#include <QString>

#include <array>

namespace vn::qt {

// What a keyword sets on a cell. The numbers only tell keywords apart.
enum class attribute {
    margin,
    margin_top,
    margin_bottom,
    margin_left,
    margin_right,
    padding,
    padding_top,
    padding_bottom,
    padding_left,
    padding_right,
    width,
    height,
    size,
    style,
    background_style,
    no_background,
    row_height,
    column_width,
    row_span,
    column_span,
    hidden,
    disabled,
    slot_width,
    line_break,
    offset_x,
    offset_y,
    offset,
    fit_widget,
    fit_widget_slot,
};

// One keyword of a cell call together with its value. Assigning to a keyword
// makes one (margin_top = 5); a flag keyword turns into one by itself
// (hidden). Each carries its own value, so a call may name the same keyword
// twice and the later value wins.
struct keyword_value
{
    attribute key;
    std::array<int, 4> numbers{}; // int, 2 ints (x/width first) or 4 (top, right, bottom, left)
    QString text;
};

// Two ints, as in size = {27, 27} (width, height) or offset = {2, 3} (x, y).
struct int2
{
    constexpr int2(int a, int b)
        : first(a)
        , second(b)
    {}
    int first;
    int second;
};

// Four ints in the order top, right, bottom, left: margin = {5, 0, 5, 10}.
struct int4
{
    constexpr int4(int t, int r, int b, int l)
        : top(t)
        , right(r)
        , bottom(b)
        , left(l)
    {}
    int top;
    int right;
    int bottom;
    int left;
};

class flag_keyword
{
public:
    constexpr explicit flag_keyword(attribute key)
        : key_(key)
    {}
    operator keyword_value() const { return keyword_value{key_, {}, QString()}; }

private:
    attribute key_;
};

class int_keyword
{
public:
    constexpr explicit int_keyword(attribute key)
        : key_(key)
    {}
    keyword_value operator=(int value) const { return keyword_value{key_, {value, 0, 0, 0}, {}}; }

private:
    attribute key_;
};

class int2_keyword
{
public:
    constexpr explicit int2_keyword(attribute key)
        : key_(key)
    {}
    keyword_value operator=(int2 value) const
    {
        return keyword_value{key_, {value.first, value.second, 0, 0}, {}};
    }

private:
    attribute key_;
};

class int4_keyword
{
public:
    constexpr explicit int4_keyword(attribute key)
        : key_(key)
    {}
    keyword_value operator=(int4 value) const
    {
        return keyword_value{key_, {value.top, value.right, value.bottom, value.left}, {}};
    }

private:
    attribute key_;
};

class string_keyword
{
public:
    constexpr explicit string_keyword(attribute key)
        : key_(key)
    {}
    keyword_value operator=(const QString &value) const { return keyword_value{key_, {}, value}; }

private:
    attribute key_;
};

// The keywords of a cell call: cell(w, size = {27, 27}, margin_top = 5, hidden).
// They are constant objects; assignment yields a value and changes nothing
// global. Inside a QWidget member function, width, height, size, style and
// hidden-like names are found as members first: write vn::qt::size = {27, 27}
// there, or bring the names in with a using-declaration.
inline namespace keywords {
inline constexpr int4_keyword margin{attribute::margin};
inline constexpr int_keyword margin_top{attribute::margin_top};
inline constexpr int_keyword margin_bottom{attribute::margin_bottom};
inline constexpr int_keyword margin_left{attribute::margin_left};
inline constexpr int_keyword margin_right{attribute::margin_right};
inline constexpr int4_keyword padding{attribute::padding};
inline constexpr int_keyword padding_top{attribute::padding_top};
inline constexpr int_keyword padding_bottom{attribute::padding_bottom};
inline constexpr int_keyword padding_left{attribute::padding_left};
inline constexpr int_keyword padding_right{attribute::padding_right};
inline constexpr int_keyword width{attribute::width};
inline constexpr int_keyword height{attribute::height};
inline constexpr int2_keyword size{attribute::size};
inline constexpr string_keyword style{attribute::style};
inline constexpr string_keyword background_style{attribute::background_style};
inline constexpr flag_keyword no_background{attribute::no_background};
inline constexpr int_keyword row_height{attribute::row_height};
inline constexpr int_keyword column_width{attribute::column_width};
inline constexpr int_keyword row_span{attribute::row_span};
inline constexpr int_keyword column_span{attribute::column_span};
inline constexpr flag_keyword hidden{attribute::hidden};
inline constexpr flag_keyword disabled{attribute::disabled};
inline constexpr int_keyword slot_width{attribute::slot_width};
inline constexpr flag_keyword line_break{attribute::line_break};
inline constexpr int_keyword offset_x{attribute::offset_x};
inline constexpr int_keyword offset_y{attribute::offset_y};
inline constexpr int2_keyword offset{attribute::offset};
inline constexpr flag_keyword fit_widget{attribute::fit_widget};
inline constexpr flag_keyword fit_widget_slot{attribute::fit_widget_slot};
} // namespace keywords

} // namespace vn::qt
