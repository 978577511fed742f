// Shares the room that there is among the members of an object, the shortest first: what they do not take is for the others.
#include <gjf/core/protocol/cut_answer.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t room_for_left = 1000;  // bytes

std::size_t size_of(const Message& value) { return message_text(value).size(); }

class Cutting {
   public:
    Message left = Message::object();

    void cut(Message& value, const std::string& place, std::size_t room) {
        if (size_of(value) <= room) {
            return;
        }
        if (value.is_object()) {
            cut_members(value, place, room);
        } else if (value.is_array()) {
            cut_items(value, place, room);
        } else if (value.is_string()) {
            cut_lines(value.get_ref<std::string&>(), place, room);
        }
    }

   private:
    void cut_members(Message& object, const std::string& place, std::size_t room) {
        std::vector<std::pair<std::size_t, std::string>> members;
        for (const auto& [key, value] : object.items()) {
            members.emplace_back(size_of(value), key);
            room -= std::min(room, key.size() + 4);
        }
        std::sort(members.begin(), members.end());
        for (std::size_t i = 0; i < members.size(); ++i) {
            const auto& [size, key] = members[i];
            const std::size_t share = room / (members.size() - i);
            cut(object[key], place + "/" + key, share);
            room -= std::min(room, size_of(object[key]));
        }
    }

    void cut_items(Message& list, const std::string& place, std::size_t room) {
        std::size_t kept = 0;
        std::size_t taken = 2;
        for (Message& item : list) {
            const std::size_t size = size_of(item) + 1;
            if (taken + size > room) {
                break;
            }
            taken += size;
            ++kept;
        }
        if (kept == 0 && list.size() > 0 && list[0].is_structured()) {
            cut(list[0], place + "/0", room - std::min(room, taken));
            kept = 1;
        }
        if (kept < list.size()) {
            left[place] = list.size() - kept;
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(kept), list.end());
        }
    }

    void cut_lines(std::string& text, const std::string& place, std::size_t room) {
        std::size_t kept = 0;
        std::size_t taken = 2;
        std::size_t lines = 0;
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
            taken += size_of(text.substr(begin, end - begin)) - 2;
            if (taken <= room) {
                kept = end;
            } else {
                ++lines;
            }
            begin = end;
        }
        left[place] = lines;
        text.resize(kept);
    }
};

}  // namespace

void cut_answer(Message& answer, std::size_t most_bytes) {
    if (size_of(answer) <= most_bytes) {
        return;
    }
    Cutting cutting;
    cutting.cut(answer, "", most_bytes - std::min(most_bytes, room_for_left));
    answer["left"] = std::move(cutting.left);
}

}  // namespace quor::input::gaussian
