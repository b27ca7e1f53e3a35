#pragma once

#include <stdexcept>

namespace vn {

// The toolkit's one exception type. It reports a wrong use of vn::qt::layout
// (an item handed in through the QLayout interface) and nothing else: every
// other failure comes back as a value with a log line.
class exception : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace vn
