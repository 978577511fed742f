// The table of Link 0 keys, and what is done with one in a job's control section.
#include <gjf/core/job/link0_keys.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

Link0Key in_model(std::string_view name, Link0Form form, std::optional<std::string> ControlSection::*text) {
    return {name, name, form, true, text};
}

Link0Key other(std::string_view name, Link0Form form = Link0Form::Text) { return {name, name, form, false, nullptr}; }

constexpr std::size_t shortest_beginning = 5;

const Link0Key* find_key_of(std::string_view line) { return find_link0_key(link0_words(line).key); }

}  // namespace

std::string checkpoint_path(std::string_view value) {
    std::string path(value);
    if (path.size() >= 2 && (path.front() == '"' || path.front() == '\'') && path.back() == path.front()) {
        path = path.substr(1, path.size() - 2);
    }
    if (path.size() < 4 || !equals_folded(std::string_view(path).substr(path.size() - 4), ".chk")) {
        path += ".chk";
    }
    return path;
}

Link0Words link0_words(std::string_view line) noexcept {
    const std::string_view text = trim_view(without_comment(line));
    if (text.empty() || text.front() != '%') {
        return {};
    }
    const std::string_view rest = trim_view(text.substr(1));  // Gaussian takes blanks behind the "%"
    const std::string_view key = rest.substr(0, rest.find_first_of("= \t"));
    const std::string_view behind = trim_view(rest.substr(key.size()));
    const bool is_assigned = !behind.empty() && behind.front() == '=';
    return {key, is_assigned ? trim_view(behind.substr(1)) : behind, is_assigned};
}

const std::vector<Link0Key>& link0_keys() {
    static const std::vector<Link0Key> keys = {
        in_model("oldchk", Link0Form::Text, &ControlSection::oldchk),
        in_model("chk", Link0Form::Text, &ControlSection::chk),
        in_model("rwf", Link0Form::Text, &ControlSection::rwf),
        in_model("mem", Link0Form::Memory, &ControlSection::mem),
        {"nprocshared", "nproc", Link0Form::Count, true, nullptr},
        in_model("cpu", Link0Form::Cores, &ControlSection::cpu),
        other("schk"),
        other("oldrwf"),
        other("oldmatrix"),
        other("oldrawmatrix"),
        other("int"),
        other("d2e"),
        other("scr"),
        other("kjob"),
        other("subst"),
        other("gpucpu"),
        other("nproclinda", Link0Form::Count),
        other("lindaworkers"),
        other("save", Link0Form::Flag),
        other("nosave", Link0Form::Flag),
        other("errorsave", Link0Form::Flag),
        other("usessh", Link0Form::Flag),
        other("usersh", Link0Form::Flag),
        other("ssh"),
        other("rsh"),
        other("debuglinda", Link0Form::Flag),
    };
    return keys;
}

const Link0Key* find_link0_key(std::string_view spelling) {
    const std::string lower = to_lower_copy(spelling);
    const std::vector<Link0Key>& keys = link0_keys();
    const auto found = std::find_if(keys.begin(), keys.end(), [&](const Link0Key& key) { return key.is_spelt_out(lower); });
    if (found != keys.end()) {
        return &*found;
    }
    const auto begins = [&](const Link0Key& key) { return key.name.substr(0, lower.size()) == lower; };
    const bool is_only = lower.size() >= shortest_beginning && std::count_if(keys.begin(), keys.end(), begins) == 1;
    return is_only ? &*std::find_if(keys.begin(), keys.end(), begins) : nullptr;
}

std::optional<std::string> link0_value(const ControlSection& control, const Link0Key& key) {
    if (key.text != nullptr) {
        return control.*key.text;
    }
    return key.in_model && control.nproc ? std::optional(std::to_string(*control.nproc)) : std::nullopt;
}

std::optional<std::string> find_link0_value(const ControlSection& control, const Link0Key& key) {
    std::optional<std::string> value = link0_value(control, key);
    const std::vector<std::string>& lines = control.other_link0_lines;
    for (auto line = lines.rbegin(); line != lines.rend() && !value; ++line) {
        const auto [written, text, is_assigned] = link0_words(*line);
        if (!is_assigned || find_link0_key(written) != &key) {
            continue;
        }
        const std::optional<std::int32_t> count = leading_int32(text);
        value = key.form != Link0Form::Count ? std::optional(std::string(text))
                : count                      ? std::optional(std::to_string(*count))
                                             : std::nullopt;
    }
    return value;
}

void store_link0(ControlSection& control, const Link0Key& key, std::string_view value) {
    if (key.text != nullptr) {
        control.*key.text = value;
    } else if (const std::optional<std::int32_t> count = leading_int32(value); key.in_model && count) {
        control.nproc = count;
    }
}

void set_link0(ControlSection& control, const Link0Key& key, std::string_view value) {
    store_link0(control, key, value);
    std::vector<std::string>& lines = control.other_link0_lines;
    const auto is_of_key = [&](const std::string& line) { return find_key_of(line) == &key; };
    if (key.in_model) {
        lines.erase(std::remove_if(lines.begin(), lines.end(), is_of_key), lines.end());
        return;
    }
    const std::string text = "%" + std::string(key.name) + (key.form == Link0Form::Flag ? "" : "=" + std::string(value));
    const auto last =
        std::find_if(lines.rbegin(), lines.rend(), is_of_key);  // the last line of a kind is the one that holds
    last == lines.rend() ? lines.push_back(text) : void(*last = text);
}

void unset_link0(ControlSection& control, const Link0Key& key) {
    if (key.text != nullptr) {
        (control.*key.text).reset();
    } else if (key.in_model) {
        control.nproc.reset();
    }
    std::vector<std::string>& lines = control.other_link0_lines;
    lines.erase(
        std::remove_if(lines.begin(), lines.end(), [&](const std::string& line) { return find_key_of(line) == &key; }),
        lines.end());
}

}  // namespace quor::input::gaussian
