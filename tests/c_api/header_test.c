/* The C header alone, used from C11. */
#include <gjf/c_api/quor_g16_gjf.h>

#include <stdio.h>
#include <string.h>

#define TEXT_OF(number) #number
#define VERSION_TEXT(major, minor, patch) TEXT_OF(major) "." TEXT_OF(minor) "." TEXT_OF(patch)

int main(void) {
    const char* const version = VERSION_TEXT(QUOR_GJF_VERSION_MAJOR, QUOR_GJF_VERSION_MINOR, QUOR_GJF_VERSION_PATCH);
    char element[3];
    quor_gjf_editor* job = gjf_editor_create_from_string("# hf\n\nt\n\n0 1\nHe 0 0 0\n");
    if (job == NULL) {
        fprintf(stderr, "%s\n", gjf_get_last_error());
        return 1;
    }
    if (gjf_editor_get_atom_element(job, 0, element, (int)sizeof element) != 0 || strcmp(element, "He") != 0) {
        return 1;
    }
    gjf_editor_destroy(job);
    return strcmp(quor_gjf_version(), version) == 0 ? 0 : 1;
}
