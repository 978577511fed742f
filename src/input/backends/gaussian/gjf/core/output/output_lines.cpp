// Cuts what a source gives into lines.
#include <gjf/core/output/output_lines.hpp>

#include <cstring>

namespace quor::input::gaussian {

// Moves what is left to the front and reads behind it; false when there is no room or nothing more comes.
bool OutputLines::fill() {
    if (begin_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
    }
    if (is_at_end_ || end_ == buffer_.size()) {
        return false;
    }
    const std::size_t count = source_.read(buffer_.data() + end_, buffer_.size() - end_);
    end_ += count;
    is_at_end_ = count == 0;
    return !is_at_end_;
}

std::string_view OutputLines::beginning(std::size_t size) {
    while (end_ < size && fill()) {
    }
    return {buffer_.data(), end_};
}

bool OutputLines::next() {
    std::size_t searched = 0;
    bool is_whole = false;
    for (;;) {
        const char* const begin = buffer_.data() + begin_;
        const std::size_t size = end_ - begin_;
        const auto* const feed = static_cast<const char*>(std::memchr(begin + searched, '\n', size - searched));
        if (feed != nullptr) {
            line_ = {begin, static_cast<std::size_t>(feed - begin)};
            begin_ += line_.size() + 1;
            is_whole = true;
            break;
        }
        searched = size;
        if (!fill()) {
            if (size == 0) {
                return false;
            }
            line_ = {buffer_.data() + begin_, size};
            begin_ = end_;
            break;
        }
    }
    if (!line_.empty() && line_.back() == '\r') {
        line_.remove_suffix(1);
    }
    number_ += is_in_line_ ? 0 : 1;
    is_in_line_ = !is_whole;
    return true;
}

}  // namespace quor::input::gaussian
