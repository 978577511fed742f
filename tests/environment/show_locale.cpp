// Prints how this process writes one and a half, in C and in C++, so that a run under a locale can be told from one that is
// not.
#include <cstdio>
#include <iostream>

int main() {
    std::printf("%.1f ", 1.5);
    std::cout.imbue(std::locale());
    std::cout << 1.5 << '\n';
    return 0;
}
