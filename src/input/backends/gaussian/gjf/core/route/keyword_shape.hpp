// The parts of a keyword with options as it is written in a route. Private to the library.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A stretch of a text: byte offsets from 0, `end` exclusive.
struct RouteStretch {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// A keyword taken apart: its name, and its options with their values.
struct KeywordShape {
    RouteStretch head;
    std::vector<RouteStretch> items;
};

/// Returns a stretch without the blanks at its ends.
RouteStretch trimmed_stretch(std::string_view text, RouteStretch part);
std::string_view stretch_text(std::string_view text, RouteStretch part);

/// An option taken apart: its name, and its value where it has one.
struct KeywordItem {
    RouteStretch name;
    RouteStretch value;
};

KeywordItem keyword_item(std::string_view text, RouteStretch item);

/// Takes apart keyword, keyword=item, keyword(items), keyword=(items), keyword=item(items) and keyword/item.
KeywordShape keyword_shape(const std::string& text);

/// Takes apart oniom(layers,items), oniom=(layers,items) and oniom(layers)=(items): layers and items are one list.
KeywordShape oniom_shape(const std::string& text);

}  // namespace quor::input::gaussian
