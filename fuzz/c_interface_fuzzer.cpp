// Calls the C functions in any order, on handles that are live or null, with texts, indices and buffers decoded from the
// input. Each call gives a result it may give; a failure leaves a message, a success none; a refused edit changes nothing.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/c_api/quor_g16_gjf.h>

#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quor::fuzz {
namespace {

constexpr const char* small_water = "# hf/sto-3g\n\nwater\n\n0 1\nO 0.0 0.0 0.1\nH 0.0 0.7 -0.4\nH 0.0 -0.7 -0.4\n\n";
constexpr const char* bonded = R"(#p b3lyp/6-31g(d) geom=connectivity

t

0 1
C -1 0.0 0.0 0.0 H
H 0 1.0 0.0 0.0 L

1 2 1.0
2

)";
constexpr const char* two_jobs = "# hf\n\na\n\n0 1\nHe 0 0 0\n\n--Link1--\n# hf\n\nb\n\n0 1\nNe 0 0 0\n\n";
constexpr const char* broken = "# hf\n\nt\n\n0 1\nH 0 0\n";
constexpr const char* job_texts[] = {small_water, bonded, two_jobs, "", broken};

std::string text_of(quor_gjf_editor* job) {
    std::vector<char> buffer(1 << 16);
    return gjf_editor_to_string(job, buffer.data(), static_cast<int>(buffer.size())) == 0 ? buffer.data() : "too long";
}

std::string text_of(quor_gjf_multi_editor* all) {
    std::vector<char> buffer(1 << 18);
    return gjf_multi_editor_to_string(all, buffer.data(), static_cast<int>(buffer.size())) == 0 ? buffer.data() : "too long";
}

/// A buffer of exactly the size that the callee is told, so that a byte too many is met by the sanitizer.
struct Buffer {
    explicit Buffer(Choices& choices) : size(choices.below(70)), bytes(size == 0 ? nullptr : new char[size]) {
        if (size > 0) {
            std::memset(bytes.get(), 'x', size);
        }
        told = choices.below(16) == 0 ? -1 : static_cast<int>(size);
    }
    bool is_valid() const { return bytes != nullptr && told > 0; }
    void hold_after(int status) const {
        if (is_valid()) {
            hold(std::memchr(bytes.get(), '\0', size) != nullptr, "a valid buffer holds a text after every call");
            hold(status >= 0 || bytes[0] == '\0', "after a failure a valid buffer is empty");
        }
        hold(is_valid() || status == -1, "a buffer that is not valid is refused");
    }

    std::size_t size;
    std::unique_ptr<char[]> bytes;
    int told = 0;
};

class Session {
   public:
    Session(const std::uint8_t* data, std::size_t size) : choices_(data, size) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() {
        for (quor_gjf_editor* editor : editors_) {
            gjf_editor_destroy(editor);
        }
        for (quor_gjf_multi_editor* editor : files_) {
            gjf_multi_editor_destroy(editor);
        }
    }

    void run() {
        constexpr void (Session::*steps[])() = {
            &Session::open, &Session::look,     &Session::copy_out,   &Session::label, &Session::change,
            &Session::save, &Session::open_all, &Session::change_all, &Session::clone, &Session::look_at_all};
        for (int step = 0; step < 60 && !choices_.empty(); ++step) {
            (this->*steps[choices_.below(std::size(steps))])();
        }
    }

   private:
    // A text of the caller's, or null.
    const char* text(std::size_t longest = 12) {
        text_ = choices_.text(longest);
        return choices_.below(16) == 0 ? nullptr : text_.c_str();
    }
    quor_gjf_editor*& slot() { return editors_[choices_.below(editors_.size())]; }
    quor_gjf_multi_editor*& file() { return files_[choices_.below(files_.size())]; }
    const char* content() {
        const std::size_t choice = choices_.below(std::size(job_texts) + 2);
        return choice < std::size(job_texts) ? job_texts[choice] : text(60);
    }

    // The messages after a call: both empty, or both the same text.
    template <typename Handle>
    static void hold_messages(bool failed, const char* handle_message, const Handle* handle) {
        const std::string thread_message = gjf_get_last_error();
        hold(failed != thread_message.empty(), "a failure leaves a message and a success none");
        hold(handle == nullptr || thread_message == handle_message, "handle and thread have the same message");
        hold(thread_message == gjf_editor_get_last_error(), "both names give the thread's message");
    }
    static void hold_call(quor_gjf_editor* job, bool failed) { hold_messages(failed, gjf_editor_last_error(job), job); }
    static void hold_call(quor_gjf_multi_editor* all, bool failed) {
        hold_messages(failed, gjf_multi_editor_last_error(all), all);
    }

    void open() {
        quor_gjf_editor*& job = slot();
        gjf_editor_destroy(job);
        job = choices_.below(8) == 0 ? gjf_editor_create_from_file(text()) : gjf_editor_create_from_string(content());
        hold((job == nullptr) == (gjf_get_last_error()[0] != '\0'), "no handle means a message");
    }

    void look() {
        quor_gjf_editor* job = slot();
        const int count = gjf_editor_get_atom_count(job);
        hold_call(job, count < 0);
        const int index = choices_.integer();
        const bool there = job != nullptr && index >= 0 && index < count;
        double x = 0;
        double y = 0;
        double z = 0;
        const int status = gjf_editor_get_atom_coords(job, index, &x, choices_.below(9) == 0 ? nullptr : &y, &z);
        hold_call(job, status != 0);
        hold(there || status == -1, "only an atom that is there has coordinates");
        hold(gjf_editor_get_atom_freeze(job, index) == -999 || there, "only an atom that is there has a freeze code");
        hold_call(job, !there);
        hold(gjf_editor_get_spin(job) == 0 || job != nullptr, "no job has no multiplicity");
        hold(gjf_editor_get_charge(job) == 0 || job != nullptr, "no job has no charge");
        hold_call(job, job == nullptr);
    }

    void copy_out() {
        quor_gjf_editor* job = slot();
        const Buffer buffer(choices_);
        const int index = choices_.integer();
        const std::size_t choice = choices_.below(3);
        const int status = choice == 0   ? gjf_editor_get_atom_element(job, index, buffer.bytes.get(), buffer.told)
                           : choice == 1 ? gjf_editor_get_atom_oniom_layer(job, index, buffer.bytes.get(), buffer.told)
                                         : gjf_editor_to_string(job, buffer.bytes.get(), buffer.told);
        hold(status == 0 || status == -1 || (status == 1 && choice == 1), "a status is one of those documented");
        hold_call(job, status == -1);
        if (job != nullptr) {
            buffer.hold_after(status);
        }
    }

    void label() {
        quor_gjf_editor* job = slot();
        const int code = choices_.integer();
        const std::string other = choices_.text(3);
        const char* word = text(3);
        const std::string before = job == nullptr ? "" : text_of(job);
        bool refused = job == nullptr || word == nullptr;
        switch (choices_.below(5)) {
            case 0:
                gjf_editor_set_freeze_all(job, code);
                refused = job == nullptr;
                break;
            case 1:
                gjf_editor_set_freeze_by_element(job, word, code);
                break;
            case 2:
                gjf_editor_set_oniom_layer_all(job, word);
                break;
            case 3:
                gjf_editor_set_oniom_layer_by_element(job, other.c_str(), word);
                break;
            default:
                gjf_editor_set_charge_and_spin(job, code, 1);
                refused = job == nullptr;
                break;
        }
        hold_call(job, refused);
        hold(job == nullptr || !refused || text_of(job) == before, "a refused edit changes nothing");
    }

    int apply_change(quor_gjf_editor* job) {
        const std::size_t choice = choices_.below(4);
        if (choice == 0) {
            const int index = choices_.integer();
            return gjf_editor_set_atom_oniom_layer(job, index, text(3));
        }
        if (choice == 1) {
            return gjf_editor_set_model_chemistry_method(job, text(8));
        }
        if (choice == 2) {
            return gjf_editor_set_model_chemistry_basis(job, text(8));
        }
        const int partners[] = {choices_.integer(), choices_.integer(), choices_.integer()};
        const double orders[] = {choices_.number(), choices_.number(), choices_.number()};
        const int count = static_cast<int>(choices_.below(5)) - 1;
        const double x = choices_.number();
        const char* element = text(3);
        return gjf_editor_add_atom(job, element, x, 0, 0, choices_.below(9) == 0 ? nullptr : partners, orders, count);
    }

    void change() {
        quor_gjf_editor* job = slot();
        const std::string before = job == nullptr ? "" : text_of(job);
        const int status = apply_change(job);
        hold_call(job, status < 0);
        hold(job != nullptr || status == -1, "nothing is done to no handle");
        hold(job == nullptr || status >= 0 || text_of(job) == before, "a refused edit changes nothing");
    }

    void save() {
        constexpr const char* paths[] = {"/dev/null", "/dev/full", "/no/such/folder/f.gjf", "", "/", nullptr};
        const char* path = paths[choices_.below(std::size(paths))];
        quor_gjf_editor* job = slot();
        const int status = gjf_editor_save_to_file(job, path);
        hold_call(job, status != 0);
        hold((status == 0) == (job != nullptr && path == paths[0]), "only /dev/null takes a job");
        quor_gjf_multi_editor* all = file();
        const int status_of_all = gjf_multi_editor_save_to_file(all, path);
        hold_call(all, status_of_all != 0);
    }

    void open_all() {
        quor_gjf_multi_editor*& all = file();
        gjf_multi_editor_destroy(all);
        all = choices_.below(8) == 0 ? gjf_multi_editor_create_from_file(text())
                                     : gjf_multi_editor_create_from_string(content());
        hold((all == nullptr) == (gjf_get_last_error()[0] != '\0'), "no handle means a message");
    }

    void change_all() {
        quor_gjf_multi_editor* all = file();
        if (all != nullptr && gjf_multi_editor_job_count(all) > 12) {
            return;
        }
        const std::string before = all == nullptr ? "" : text_of(all);
        const std::size_t choice = choices_.below(3);
        const int index = choices_.integer();
        const int status = choice == 0   ? gjf_multi_editor_add_job_from_string(all, content())
                           : choice == 1 ? gjf_multi_editor_remove_job(all, index)
                                         : gjf_multi_editor_set_job(all, index, slot());
        hold(status == 0 || status == -1, "a status is one of those documented");
        hold_call(all, status != 0);
        hold(all == nullptr || status == 0 || text_of(all) == before, "a refused edit changes nothing");
    }

    void clone() {
        quor_gjf_multi_editor* all = file();
        quor_gjf_editor*& job = slot();
        gjf_editor_destroy(job);
        const int index = choices_.integer();
        job = choices_.below(2) == 0 ? gjf_multi_editor_get_job(all, index) : gjf_multi_editor_clone_job(all, index);
        hold_call(all, job == nullptr);
        if (job != nullptr) {
            const std::string before = text_of(all);
            gjf_editor_set_freeze_all(job, 7);
            hold(text_of(all) == before, "a job taken out is a copy");
        }
    }

    void look_at_all() {
        quor_gjf_multi_editor* all = file();
        const int count = gjf_multi_editor_job_count(all);
        hold_call(all, count < 0);
        const Buffer buffer(choices_);
        const int status = gjf_multi_editor_to_string(all, buffer.bytes.get(), buffer.told);
        hold_call(all, status != 0);
        if (all != nullptr) {
            buffer.hold_after(status);
        }
    }

    Choices choices_;
    std::string text_;
    std::array<quor_gjf_editor*, 3> editors_{};
    std::array<quor_gjf_multi_editor*, 2> files_{};
};

}  // namespace

int c_interface(const std::uint8_t* data, std::size_t size) {
    Session(data, size).run();
    return 0;
}

}  // namespace quor::fuzz
