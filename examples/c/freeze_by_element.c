/* Freezes all atoms of an element: freeze_by_element IN ELEMENT CODE OUT */
#include <gjf/c_api/quor_g16_gjf.h>

#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    quor_gjf_editor* job;
    int status;
    if (argc != 5) {
        fprintf(stderr, "usage: freeze_by_element IN ELEMENT CODE OUT\n");
        return 2;
    }
    job = gjf_editor_create_from_file(argv[1]);
    if (job == NULL) {
        fprintf(stderr, "%s\n", gjf_get_last_error());
        return 1;
    }
    gjf_editor_set_freeze_by_element(job, argv[2], atoi(argv[3]));
    status = gjf_editor_save_to_file(job, argv[4]);
    if (status != 0) {
        fprintf(stderr, "%s\n", gjf_editor_last_error(job));
    }
    gjf_editor_destroy(job);
    return status != 0;
}
