/* Puts a hydroxyl group into the high layer of an ONIOM job, all else into the low one: assign_layers IN OUT */
#include <gjf/c_api/quor_g16_gjf.h>

#include <stdio.h>
#include <string.h>

static int is_element(quor_gjf_editor* job, int index, const char* symbol) {
    char element[16];
    return gjf_editor_get_atom_element(job, index, element, (int)sizeof element) == 0 && strcmp(element, symbol) == 0;
}

static double squared_distance(quor_gjf_editor* job, int a, int b) {
    double p[3] = {0, 0, 0};
    double q[3] = {0, 0, 0};
    gjf_editor_get_atom_coords(job, a, &p[0], &p[1], &p[2]);
    gjf_editor_get_atom_coords(job, b, &q[0], &q[1], &q[2]);
    return (p[0] - q[0]) * (p[0] - q[0]) + (p[1] - q[1]) * (p[1] - q[1]) + (p[2] - q[2]) * (p[2] - q[2]);
}

/* Oxygen, and every hydrogen within 1.1 angstrom of one. */
static int in_hydroxyl(quor_gjf_editor* job, int index) {
    int other;
    if (is_element(job, index, "O")) {
        return 1;
    }
    for (other = 0; is_element(job, index, "H") && other < gjf_editor_get_atom_count(job); ++other) {
        if (is_element(job, other, "O") && squared_distance(job, index, other) < 1.1 * 1.1) {
            return 1;
        }
    }
    return 0;
}

static int assign(quor_gjf_editor* job, const char* path) {
    int i;
    for (i = 0; i < gjf_editor_get_atom_count(job); ++i) {
        if (in_hydroxyl(job, i) && gjf_editor_set_atom_oniom_layer(job, i, "H") != 0) {
            return -1;
        }
    }
    return gjf_editor_save_to_file(job, path);
}

int main(int argc, char** argv) {
    quor_gjf_editor* job;
    int status;
    if (argc < 3) {
        fprintf(stderr, "usage: assign_layers IN OUT\n");
        return 2;
    }
    job = gjf_editor_create_from_file(argv[1]);
    if (job == NULL) {
        fprintf(stderr, "%s\n", gjf_get_last_error());
        return 1;
    }
    status = assign(job, argv[argc - 1]);
    if (status != 0) {
        fprintf(stderr, "%s\n", gjf_editor_last_error(job));
    }
    gjf_editor_destroy(job);
    return status != 0;
}
