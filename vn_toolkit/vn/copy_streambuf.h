#pragma once

#include <QMutex>
#include <QMutexLocker>

#include <map>
#include <ostream>
#include <streambuf>
#include <string>
#include <thread>

namespace vn {

// Taps a standard stream: everything written to it still goes to the stream's
// own buffer at once, and a copy goes to `copy` (the log's capture stream).
//
// Any thread may write to the tapped stream, with or without the message
// handler's lock (model code prints to std::cout directly), so the tap keeps
// no put area: every write arrives in overflow() or xsputn() and is handled
// under `lock`, which the reader of `copy` takes as well. Text is staged per
// thread and copied a line at a time, so lines of two threads never mix in the
// copy; sync() (std::flush, std::endl) copies a pending partial line too.
//
// The destructor gives the stream its own buffer back.
template <class char_type, class traits_type = std::char_traits<char_type>>
class copy_streambuf : public std::basic_streambuf<char_type, traits_type>
{
public:
    using stream_type = std::basic_ostream<char_type, traits_type>;
    using buffer_type = std::basic_streambuf<char_type, traits_type>;
    using string_type = std::basic_string<char_type, traits_type>;
    using int_type = typename traits_type::int_type;

    // Installs itself as the buffer of `stream`.
    copy_streambuf(stream_type &stream, stream_type &copy, QMutex &lock)
        : stream_(stream)
        , copy_(copy)
        , lock_(lock)
        , own_buffer_(stream.rdbuf())
    {
        stream_.rdbuf(this);
    }

    ~copy_streambuf() override { stream_.rdbuf(own_buffer_); }

    copy_streambuf(const copy_streambuf &) = delete;
    copy_streambuf &operator=(const copy_streambuf &) = delete;

protected:
    int_type overflow(int_type c) override
    {
        if (traits_type::eq_int_type(c, traits_type::eof()))
            return traits_type::not_eof(c);
        const char_type ch = traits_type::to_char_type(c);
        QMutexLocker locker(&lock_);
        write_locked(&ch, 1);
        return c;
    }

    std::streamsize xsputn(const char_type *s, std::streamsize n) override
    {
        QMutexLocker locker(&lock_);
        write_locked(s, n);
        return n;
    }

    int sync() override
    {
        QMutexLocker locker(&lock_);
        auto it = staging_.find(std::this_thread::get_id());
        if (it != staging_.end()) {
            copy_.write(it->second.data(), std::streamsize(it->second.size()));
            staging_.erase(it);
        }
        return own_buffer_->pubsync();
    }

private:
    void write_locked(const char_type *s, std::streamsize n)
    {
        own_buffer_->sputn(s, n);
        const auto it = staging_.emplace(std::this_thread::get_id(), string_type()).first;
        string_type &staged = it->second;
        staged.append(s, std::size_t(n));
        const auto line_end = staged.find_last_of(char_type('\n'));
        if (line_end == string_type::npos)
            return;
        copy_.write(staged.data(), std::streamsize(line_end + 1));
        staged.erase(0, line_end + 1);
        if (staged.empty())
            staging_.erase(it);
    }

    stream_type &stream_;
    stream_type &copy_;
    QMutex &lock_;
    buffer_type *own_buffer_;
    std::map<std::thread::id, string_type> staging_; // unfinished line per thread
};

} // namespace vn
