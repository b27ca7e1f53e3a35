#pragma once

#include <cstddef>
#include <utility>

namespace vn {

// A range of elements: pointer, length and whether the range owns them. A
// non-owning range is a view that must not outlive the data it points into;
// an owning one frees its elements with delete[]. Owning ranges move but do
// not copy, so each buffer has exactly one owner.
template <typename T> class array
{
public:
    array() = default;
    array(T *data, std::size_t size, bool owned = false)
        : data_(data)
        , size_(size)
        , owned_(owned)
    {}
    ~array()
    {
        if (owned_)
            delete[] data_;
    }
    array(const array &) = delete;
    array &operator=(const array &) = delete;
    array(array &&other) noexcept
        : data_(std::exchange(other.data_, nullptr))
        , size_(std::exchange(other.size_, 0))
        , owned_(std::exchange(other.owned_, false))
    {}
    array &operator=(array &&other) noexcept
    {
        if (this != &other) {
            if (owned_)
                delete[] data_;
            data_ = std::exchange(other.data_, nullptr);
            size_ = std::exchange(other.size_, 0);
            owned_ = std::exchange(other.owned_, false);
        }
        return *this;
    }

    T *data() const { return data_; }
    std::size_t size() const { return size_; }
    bool owned() const { return owned_; }
    bool empty() const { return size_ == 0; }
    T *begin() const { return data_; }
    T *end() const { return data_ + size_; }
    T &operator[](std::size_t i) const { return data_[i]; }

private:
    T *data_ = nullptr;
    std::size_t size_ = 0;
    bool owned_ = false;
};

} // namespace vn
