/* Adds a hydrogen atom bonded to the first atom: add_atom IN OUT */
#include <gjf/c_api/quor_g16_gjf.h>

#include <stdio.h>

int main(int argc, char** argv) {
    const int partner = 0;
    const double order = 1.0;
    quor_gjf_editor* job;
    int failed;
    if (argc < 3) {
        fprintf(stderr, "usage: add_atom IN OUT\n");
        return 2;
    }
    job = gjf_editor_create_from_file(argv[1]);
    if (job == NULL) {
        fprintf(stderr, "%s\n", gjf_get_last_error());
        return 1;
    }
    failed = gjf_editor_add_atom(job, "H", 1.0, -0.5, 0.0, &partner, &order, 1) < 0 ||
             gjf_editor_save_to_file(job, argv[argc - 1]) != 0;
    if (failed) {
        fprintf(stderr, "%s\n", gjf_editor_last_error(job));
    }
    gjf_editor_destroy(job);
    return failed;
}
