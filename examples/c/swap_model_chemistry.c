/* Gives every job of a file another method and basis set: swap_model_chemistry IN METHOD BASIS OUT */
#include <gjf/c_api/quor_g16_gjf.h>

#include <stdio.h>

/* Jobs are edited as copies and put back. Returns 0, or -1 with the thread's message set. */
static int swap_job(quor_gjf_multi_editor* file, int index, const char* method, const char* basis) {
    quor_gjf_editor* job = gjf_multi_editor_clone_job(file, index);
    int status = -1;
    if (job != NULL && gjf_editor_set_model_chemistry_method(job, method) == 0 &&
        gjf_editor_set_model_chemistry_basis(job, basis) == 0) {
        status = gjf_multi_editor_set_job(file, index, job);
    }
    gjf_editor_destroy(job);
    return status;
}

int main(int argc, char** argv) {
    quor_gjf_multi_editor* file;
    int status = 0;
    int i;
    if (argc != 5) {
        fprintf(stderr, "usage: swap_model_chemistry IN METHOD BASIS OUT\n");
        return 2;
    }
    file = gjf_multi_editor_create_from_file(argv[1]);
    if (file == NULL) {
        fprintf(stderr, "%s\n", gjf_get_last_error());
        return 1;
    }
    for (i = 0; status == 0 && i < gjf_multi_editor_job_count(file); ++i) {
        status = swap_job(file, i, argv[2], argv[3]);
    }
    if (status == 0) {
        status = gjf_multi_editor_save_to_file(file, argv[4]);
    }
    if (status != 0) {
        fprintf(stderr, "%s\n", gjf_get_last_error());
    }
    gjf_multi_editor_destroy(file);
    return status != 0;
}
