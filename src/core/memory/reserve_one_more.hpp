// Room for one more element of an array, so that adding it cannot fail.
#pragma once

namespace quor::core::memory {

/// Makes room for one more element; grows as push_back does, so that many additions stay linear.
template <typename List>
void reserve_one_more(List& list) {
    if (list.size() == list.capacity()) {
        list.reserve(2 * list.size() + 1);
    }
}

}  // namespace quor::core::memory
