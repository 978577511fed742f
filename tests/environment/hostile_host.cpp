// Loaded into a program before it runs (LD_PRELOAD): sets the process's locale, C and C++ alike, from the environment, as a
// host with a user interface does.
#include <clocale>
#include <locale>

namespace {

[[gnu::constructor]] void set_locale() {
    std::setlocale(LC_ALL, "");
    std::locale::global(std::locale(""));
}

}  // namespace
