#pragma once

#include <QString>

#include <iostream>
#include <sstream>
#include <string>

// Swaps the buffers of std::cout and std::cerr for string buffers while alive,
// so a test can read what the code under test printed on either stream.
class stream_capture
{
public:
    stream_capture()
        : old_out_(std::cout.rdbuf(out_.rdbuf()))
        , old_err_(std::cerr.rdbuf(err_.rdbuf()))
    {}
    ~stream_capture()
    {
        std::cout.rdbuf(old_out_);
        std::cerr.rdbuf(old_err_);
    }
    stream_capture(const stream_capture &) = delete;
    stream_capture &operator=(const stream_capture &) = delete;

    std::string out() const { return out_.str(); }
    std::string err() const { return err_.str(); }
    QString text() const { return QString::fromStdString(out_.str()); }
    QString err_text() const { return QString::fromStdString(err_.str()); }

private:
    std::ostringstream out_;
    std::ostringstream err_;
    std::streambuf *old_out_;
    std::streambuf *old_err_;
};
