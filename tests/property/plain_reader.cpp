// The plain reader: by the letter, and never fast.
#include "plain_reader.hpp"

#include <array>
#include <cctype>
#include <cstdlib>
#include <locale>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace quor::test {
namespace {

using Texts = std::vector<std::string>;

std::string trim(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(" \t\r\n") + 1 - begin);
}

std::string lower(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

std::string uncommented(const std::string& line) { return line.substr(0, line.find('!')); }

Texts lines_of(const std::string& text) {
    Texts lines;
    std::string line;
    for (const char c : text + '\n') {
        if (c == '\n') {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            lines.push_back(line);
            line.clear();
        } else {
            line += c;
        }
    }
    return lines;
}

std::string joined(const Texts& lines) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text += (i == 0 ? "" : "\n") + lines[i];
    }
    return text;
}

// Cuts at white space and commas outside quotes and brackets.
Texts fields_of(const std::string& text) {
    Texts fields;
    std::string field;
    int depth = 0;
    char quote = 0;
    for (const char c : text + ' ') {
        if (quote != 0) {
            quote = c == quote ? static_cast<char>(0) : quote;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (c == '(' || c == '[' || c == '{') {
            ++depth;
        } else if (c == ')' || c == ']' || c == '}') {
            depth -= depth > 0 ? 1 : 0;
        }
        const bool separates = c == ',' || std::isspace(static_cast<unsigned char>(c)) != 0;
        if (!separates || depth > 0 || quote != 0) {
            field += c;
        } else if (!field.empty()) {
            fields.push_back(field);
            field.clear();
        }
    }
    return fields;
}

bool is_integer(const std::string& text) {
    const std::size_t digits = text.find_first_not_of("+-") == 0 ? 0 : 1;
    return text.size() > digits && text.find_first_not_of("0123456789", digits) == std::string::npos;
}

bool is_number(const std::string& text) {
    std::istringstream rest(text);
    rest.imbue(std::locale::classic());
    double number = 0;
    return rest >> number && rest.peek() == std::istringstream::traits_type::eof();
}

bool is_name(const std::string& text) {
    const auto may_stand = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; };
    bool all = !text.empty() && std::isdigit(static_cast<unsigned char>(text[0])) == 0;
    for (const char c : text) {
        all = all && may_stand(c);
    }
    return all;
}

class PlainReader {
   public:
    explicit PlainReader(const std::string& text) : lines_(lines_of(text)) {}

    PlainJob job;

    void read() {
        read_control(section());
        job.title = joined(wanted("Missing title section"));
        const Texts molecule = wanted("Missing geometry section");
        if (molecule.size() < 2) {
            throw std::runtime_error("Geometry section must have at least 2 lines");
        }
        read_charges(molecule[0]);
        const Texts specification(molecule.begin() + 1, molecule.end());
        is_zmatrix_line(fields_of(uncommented(specification[0]))) ? read_zmatrix(specification) : read_atoms(specification);
        for (Texts lines = section(); !lines.empty(); lines = section()) {
            job.rest.insert(job.rest.end(), lines.begin(), lines.end());
        }
    }

   private:
    Texts section() {
        Texts lines;
        while (next_ < lines_.size() && trim(lines_[next_]).empty()) {
            ++next_;
        }
        while (next_ < lines_.size() && !trim(lines_[next_]).empty()) {
            lines.push_back(lines_[next_++]);
        }
        return lines;
    }

    Texts wanted(const char* message) {
        Texts lines = section();
        if (lines.empty()) {
            throw std::runtime_error(message);
        }
        return lines;
    }

    void read_control(const Texts& lines) {
        if (lines.empty()) {
            throw std::runtime_error("Empty file or invalid format");
        }
        std::map<std::string, std::string> values;
        Texts others;
        bool route = false;
        for (const std::string& raw : lines) {
            const std::string line = trim(uncommented(raw));
            if (!route && line[0] != '#' && line[0] != '%') {
                throw std::runtime_error("Invalid control line: " + raw);
            }
            if (line[0] != '%' || !store(line, values)) {
                route = route || line[0] != '%';
                Texts words = route ? fields_of(line) : Texts();
                job.words.insert(job.words.end(), words.begin(), words.end());
                others.insert(others.end(), route ? 0 : 1, line);
            }
        }
        for (const auto& [key, value] : values) {
            job.link0.push_back(key + "=" + value);
        }
        job.link0.insert(job.link0.end(), others.begin(), others.end());
    }

    static bool store(const std::string& line, std::map<std::string, std::string>& values) {
        const std::size_t equals = line.find('=');
        const std::string key = lower(trim(line.substr(1, equals - 1)));
        const std::string value = equals == std::string::npos ? "" : trim(line.substr(equals + 1));
        const bool is_count = key == "nproc" || key == "nprocshared";
        if (value.empty() ||
            (!is_count && key != "chk" && key != "oldchk" && key != "rwf" && key != "mem" && key != "cpu")) {
            return false;
        }
        values[is_count ? "nproc" : key] = is_count ? std::to_string(std::atoi(value.c_str())) : value;
        return true;
    }

    void read_charges(const std::string& line) {
        const Texts fields = fields_of(uncommented(line));
        bool good = fields.size() >= 2 && fields.size() % 2 == 0;
        for (const std::string& field : fields) {
            good = good && is_integer(field);
        }
        if (!good) {
            throw std::runtime_error("Invalid charge/spin line: " + line);
        }
        for (const std::string& field : fields) {
            job.charges.push_back(std::to_string(std::atoi(field.c_str())));
        }
    }

    static std::size_t coordinates_at(const Texts& fields) { return fields.size() >= 5 && is_integer(fields[1]) ? 2 : 1; }

    static bool is_zmatrix_line(const Texts& fields) {
        const std::size_t at = coordinates_at(fields);
        if (fields.size() >= 4 && is_number(fields[at]) && is_number(fields[at + 1]) && is_number(fields[at + 2])) {
            return false;
        }
        bool good = fields.size() == 1 || fields.size() == 3 || fields.size() == 5 || fields.size() == 7;
        for (std::size_t i = 1; good && i < fields.size(); i += 2) {
            good = is_integer(fields[i]);
        }
        return good;
    }

    void read_atoms(const Texts& lines) {
        for (const std::string& line : lines) {
            const Texts fields = fields_of(uncommented(line));
            if (fields.empty()) {
                continue;
            }
            if (fields.size() <= 3) {
                const std::size_t equals = line.find('=');
                const std::string name = trim(line.substr(0, equals));
                if (equals == std::string::npos || !is_name(name) || trim(line.substr(equals + 1)).empty()) {
                    throw std::runtime_error("Invalid coordinate line: " + line);
                }
                job.variables.push_back(name + "=" + trim(uncommented(line).substr(equals + 1)));
                continue;
            }
            const std::size_t at = coordinates_at(fields);
            std::string atom = fields[0] + "|" + (at == 2 ? std::to_string(std::atoi(fields[1].c_str())) : "");
            for (std::size_t i = at; i < at + 3; ++i) {
                const std::string unsigned_text = fields[i].substr(fields[i][0] == '-' || fields[i][0] == '+' ? 1 : 0);
                if (!is_number(fields[i]) && !is_name(unsigned_text)) {
                    throw std::runtime_error("Invalid coordinate value: " + fields[i]);
                }
                atom += "|" + fields[i];
            }
            job.atoms.push_back(atom + "|" + (fields.size() > at + 3 ? fields[at + 3] : ""));
        }
    }

    void read_zmatrix(const Texts& lines) {
        bool rows = true;
        for (const std::string& line : lines) {
            read_zmatrix_line(line, rows);
        }
        const std::size_t before = next_;
        const Texts values = section();
        bool good = !values.empty();
        for (const std::string& line : values) {
            const Texts fields = fields_of(line);
            good = good && (is_header(line) || line.find('=') != std::string::npos ||
                            (fields.size() >= 2 && is_name(fields[0]) && is_number(fields[1])));
        }
        next_ = good ? next_ : before;
        for (const std::string& line : good ? values : Texts()) {
            read_zmatrix_line(line, rows = false);
        }
    }

    static bool is_header(const std::string& line) {
        const std::string text = lower(trim(line));
        return text == "variables" || text == "variables:" || text == "constants" || text == "constants:";
    }

    void read_zmatrix_line(const std::string& line, bool& rows) {
        const Texts fields = fields_of(uncommented(line));
        if (is_header(line)) {
            rows = false;
        } else if (rows && is_zmatrix_line(fields)) {
            std::string row = fields[0];
            for (std::size_t i = 1; i < 7; i += 2) {
                row += "|" + (i < fields.size() ? std::to_string(std::atoi(fields[i].c_str())) + " " + fields[i + 1] : "");
            }
            job.rows.push_back(row);
        } else {
            rows = false;
            const std::size_t equals = line.find('=');
            if (equals == std::string::npos && fields.size() < 2) {
                throw std::runtime_error("Invalid Z-matrix variable line: " + line);
            }
            job.variables.push_back(equals == std::string::npos
                                        ? fields[0] + "=" + fields[1]
                                        : trim(line.substr(0, equals)) + "=" + trim(uncommented(line).substr(equals + 1)));
        }
    }

    Texts lines_;
    std::size_t next_ = 0;
};

using namespace input::gaussian;

std::string label_of(const AtomInfo& info) {
    std::string label = info.element + (info.mm_type ? "-" + *info.mm_type : "");
    for (const auto& [key, value] : info.params) {
        label += "(" + key + "=" + value + ")";
    }
    return label;
}

std::string row_of(const ZMatrixEntry& entry) {
    std::string row = label_of(entry.info);
    for (const auto* reference : {&entry.bond, &entry.angle, &entry.dihedral}) {
        row += "|" + (*reference ? std::to_string((*reference)->atom) + " " + (*reference)->value : "");
    }
    return row;
}

}  // namespace

PlainJob read_plainly(const std::string& text) {
    PlainReader reader(text);
    try {
        reader.read();
    } catch (const std::runtime_error& error) {
        reader.job.error = error.what();
    }
    return reader.job;
}

PlainJob plain_form_of(const GJFData& data) {
    PlainJob job;
    const ControlSection& control = data.control;
    const std::map<std::string, std::optional<std::string>> values = {
        {"chk", control.chk}, {"cpu", control.cpu},
        {"mem", control.mem}, {"oldchk", control.oldchk},
        {"rwf", control.rwf}, {"nproc", control.nproc ? std::optional(std::to_string(*control.nproc)) : std::nullopt}};
    for (const auto& [key, value] : values) {
        job.link0.insert(job.link0.end(), value ? 1 : 0, key + "=" + value.value_or(""));
    }
    job.link0.insert(job.link0.end(), control.other_link0_lines.begin(), control.other_link0_lines.end());
    job.words = control.route_keywords;
    job.title = data.title;
    for (const ChargeSpinPair& pair : data.geom.charge_spin_pairs()) {
        job.charges.insert(job.charges.end(), {std::to_string(pair.charge), std::to_string(pair.multiplicity)});
    }
    for (const AtomCoord& atom : data.geom.atoms) {
        job.atoms.push_back(label_of(atom.info) + "|" + (atom.freeze ? std::to_string(*atom.freeze) : "") + "|" +
                            atom.x_ref.text + "|" + atom.y_ref.text + "|" + atom.z_ref.text + "|" + atom.layer.value_or(""));
    }
    for (const ZMatrixEntry& entry : data.geom.zmatrix_entries) {
        job.rows.push_back(row_of(entry));
    }
    for (const auto* list : {&data.geom.variables, &data.geom.constants, &data.geom.cartesian_variables}) {
        for (const ZMatrixVariable& variable : *list) {
            job.variables.push_back(variable.name + "=" + variable.value);
        }
    }
    for (std::size_t i = 0; i < data.extra_inputs.size(); ++i) {
        for (const std::string& line : lines_of(data.extra_input_text(i))) {
            job.rest.insert(job.rest.end(), trim(line).empty() ? 0 : 1, line);
        }
    }
    return job;
}

std::string plain_difference(const PlainJob& a, const PlainJob& b) {
    const std::array<std::pair<const char*, Texts PlainJob::*>, 7> lists = {{{"Link 0", &PlainJob::link0},
                                                                             {"words", &PlainJob::words},
                                                                             {"charges", &PlainJob::charges},
                                                                             {"atoms", &PlainJob::atoms},
                                                                             {"rows", &PlainJob::rows},
                                                                             {"variables", &PlainJob::variables},
                                                                             {"rest", &PlainJob::rest}}};
    if (a.error != b.error || a.title != b.title) {
        return "error or title: " + a.error + a.title + " <> " + b.error + b.title;
    }
    for (const auto& [name, list] : lists) {
        if (a.*list != b.*list) {
            return std::string(name) + ": " + joined(a.*list) + " <> " + joined(b.*list);
        }
    }
    return {};
}

}  // namespace quor::test
