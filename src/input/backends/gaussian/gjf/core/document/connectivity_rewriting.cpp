// Writes the connectivity rows whose bonds or atoms changed; the others keep their bytes.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/document/field_line.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_writing.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace quor::input::gaussian {
namespace {

using AtomPair = std::pair<std::size_t, std::size_t>;

AtomPair pair_of(std::size_t a, std::size_t b) { return {std::min(a, b), std::max(a, b)}; }

std::string order_text(double order) {
    const std::string one = fixed_text(order, 1);
    return to_number(one) == order ? one : shortest_text(order);
}

// The bonds that should be there, each with its order, and whether a row holds it already.
class WantedBonds {
   public:
    explicit WantedBonds(const ConnectivitySection& section) {
        for (const Bond& bond : section.bonds) {
            // Both are atoms of the job.
            orders_[pair_of(static_cast<std::size_t>(bond.atom1), static_cast<std::size_t>(bond.atom2))].push_back(
                bond.order);
        }
    }
    // Returns the order of the n-th bond of a pair as the rows hold it; null when it is gone.
    const double* order_of(const AtomPair& pair) {
        const auto found = orders_.find(pair);
        if (found == orders_.end()) {
            return nullptr;
        }
        const std::size_t n = written_[pair]++;
        return n < found->second.size() ? &found->second[n] : nullptr;
    }
    // Calls `take` for every bond that no row holds, in the order of atoms.
    template <typename Take>
    void for_each_left(Take take) {
        for (const auto& [pair, orders] : orders_) {
            for (std::size_t n = written_[pair]; n < orders.size(); ++n) {
                take(pair, orders[n]);
            }
        }
    }

   private:
    std::map<AtomPair, std::vector<double>> orders_;
    std::map<AtomPair, std::size_t> written_;
};

// A row as it will stand.
struct Row {
    std::size_t atom = 0;      // from 0
    std::size_t old_line = 0;  // 0 for a new row
    std::string text;
};

class RowsRewriter {
   public:
    RowsRewriter(JobRewriting& job, const LineRange& lines, const ConnectivitySection& section)
        : job_(job), lines_(lines), wanted_(section) {}

    void rewrite() {
        for (std::size_t line = lines_.first; line <= lines_.last; ++line) {
            take_line(line);
        }
        add_rows_of_new_atoms();
        wanted_.for_each_left([this](const AtomPair& pair, double order) { add_bond(pair, order); });
        if (job_.places.renumbered) {
            std::stable_sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return a.atom < b.atom; });
        }
        write();
    }

   private:
    std::size_t place_of(std::string_view field) const {
        const std::optional<std::int64_t> number = to_int64(field);
        const bool is_atom = number && *number >= 1 && std::in_range<std::size_t>(*number);
        const std::size_t old = is_atom ? static_cast<std::size_t>(*number) - 1 : AtomPlaces::gone;
        return old < job_.places.old_count() ? job_.places.places[old] : old;
    }

    void take_line(std::size_t number) {
        FieldLine row(job_.lines.line(number));
        if (row.size() == 0) {
            return;
        }
        const std::size_t atom = place_of(row.field(0));
        if (atom == AtomPlaces::gone) {
            gone_lines_.push_back(number);
            return;
        }
        if (const std::string text = std::to_string(atom + 1); row.field(0) != text) {
            row.set_number(0, text);
        }
        for (std::size_t i = 1; i + 1 < row.size();) {
            i += take_bond(row, i, atom) ? 2 : 0;
        }
        rows_.push_back({atom, number, row.text()});
    }

    // Brings one bond of a row up to date; returns whether it is still there.
    bool take_bond(FieldLine& row, std::size_t i, std::size_t atom) {
        const std::size_t partner = place_of(row.field(i));
        const double* order = partner == AtomPlaces::gone ? nullptr : wanted_.order_of(pair_of(atom, partner));
        if (order == nullptr) {
            row.remove(i + 1);
            row.remove(i);
            return false;
        }
        if (const std::string text = std::to_string(partner + 1); row.field(i) != text) {
            row.set_text(i, text);
        }
        if (to_number(row.field(i + 1)) != *order) {
            row.set_text(i + 1, order_text(*order));
        }
        return true;
    }

    void add_rows_of_new_atoms() {
        if (!job_.places.added) {
            return;
        }
        std::set<std::size_t> present;
        for (const Row& row : rows_) {
            present.insert(row.atom);
        }
        const std::string_view first = rows_.empty() ? std::string_view() : std::string_view(rows_.front().text);
        const std::string indent(first.substr(0, std::min(first.find_first_not_of(' '), first.size())));
        for (std::size_t atom = 0; atom < job_.places.count; ++atom) {
            const bool is_new = job_.origins[atom] >= job_.places.old_count();
            if (is_new && present.count(atom) == 0) {
                rows_.push_back({atom, 0, indent + std::to_string(atom + 1)});
            }
        }
    }

    void add_bond(const AtomPair& pair, double order) {
        if (row_of_.empty()) {
            for (std::size_t i = rows_.size(); i-- > 0;) {
                row_of_[rows_[i].atom] = i;
            }
        }
        const auto [found, is_new] = row_of_.emplace(pair.first, rows_.size());
        if (is_new) {
            rows_.push_back({pair.first, 0, std::to_string(pair.first + 1)});
        }
        Row& row = rows_[found->second];
        FieldLine line(row.text);
        line.insert_after(line.size() - 1, std::to_string(pair.second + 1));
        line.insert_after(line.size() - 1, order_text(order));
        row.text = line.text();
    }

    // Rows that were there fill their lines in order; further ones follow the last.
    void write() {
        for (const std::size_t line : gone_lines_) {
            job_.edits.remove(line);
        }
        std::vector<std::size_t> slots;
        for (const Row& row : rows_) {
            if (row.old_line != 0) {
                slots.push_back(row.old_line);
            }
        }
        std::sort(slots.begin(), slots.end());
        std::size_t slot = 0;
        std::size_t last = lines_.last;
        for (const Row& row : rows_) {
            if (slot < slots.size()) {
                const std::size_t line = slots[slot++];
                if (job_.lines.line(line) != row.text) {
                    job_.edits.replace(line, row.text);
                }
            } else {
                job_.edits.insert_after(last, row.text);
            }
        }
    }

    JobRewriting& job_;
    LineRange lines_;
    WantedBonds wanted_;
    std::vector<Row> rows_;
    std::map<std::size_t, std::size_t> row_of_;  // for each atom, its first row; filled when a bond is added
    std::vector<std::size_t> gone_lines_;
};

}  // namespace

void rewrite_connectivity(JobRewriting& job, const LineRange& lines, const ConnectivitySection& bonds) {
    RowsRewriter(job, lines, bonds).rewrite();
}

}  // namespace quor::input::gaussian
