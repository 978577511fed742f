/* Writes the jobs of two files into one: merge_files FIRST SECOND OUT */
#include <gjf/c_api/quor_g16_gjf.h>

#include <stdio.h>
#include <stdlib.h>

/* Returns a job's text, to be freed; the buffer grows until the text fits. NULL on failure. */
static char* text_of(quor_gjf_editor* job) {
    int size = 1 << 12;
    char* text = malloc((size_t)size);
    while (text != NULL && gjf_editor_to_string(job, text, size) != 0) {
        free(text);
        text = NULL;
        if (size <= (1 << 29)) {
            size *= 2;
            text = malloc((size_t)size);
        }
    }
    return text;
}

static int append(quor_gjf_multi_editor* target, quor_gjf_multi_editor* source) {
    int i;
    int status = 0;
    for (i = 0; status == 0 && i < gjf_multi_editor_job_count(source); ++i) {
        quor_gjf_editor* job = gjf_multi_editor_clone_job(source, i);
        char* text = job == NULL ? NULL : text_of(job);
        status = text == NULL ? -1 : gjf_multi_editor_add_job_from_string(target, text);
        free(text);
        gjf_editor_destroy(job);
    }
    return status;
}

int main(int argc, char** argv) {
    quor_gjf_multi_editor* first;
    quor_gjf_multi_editor* second;
    int failed;
    if (argc < 4) {
        fprintf(stderr, "usage: merge_files FIRST SECOND OUT\n");
        return 2;
    }
    first = gjf_multi_editor_create_from_file(argv[1]);
    second = first == NULL ? NULL : gjf_multi_editor_create_from_file(argv[2]);
    failed = second == NULL || append(first, second) != 0 || gjf_multi_editor_save_to_file(first, argv[argc - 1]) != 0;
    if (failed) {
        fprintf(stderr, "%s\n", gjf_get_last_error());
    }
    gjf_multi_editor_destroy(first);
    gjf_multi_editor_destroy(second);
    return failed;
}
