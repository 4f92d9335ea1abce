/* Makes polyhedra.exo by the Exodus library: gcc polyhedra.c -lexoIIv2c && ./a.out
 * A tetrahedron of the points 1 to 4 far away, and two unit cubes in a row along x as polyhedra of
 * the points 5 to 16, with FillTime 0.1, 0.2 and 0.3. */
#include <exodusII.h>

int main(void) {
    int computer = 8, file = 8;
    int id = ex_create("polyhedra.exo", EX_CLOBBER, &computer, &file);
    ex_init_params sizes = {.num_dim = 3, .num_nodes = 16, .num_elem = 3, .num_elem_blk = 2,
                            .num_face = 11, .num_face_blk = 1};
    ex_put_init_ext(id, &sizes);
    double x[16] = {10, 11, 10, 10}, y[16] = {0, 0, 1, 0}, z[16] = {0, 0, 0, 1};
    for (int p = 0; p < 12; ++p) {
        x[4 + p] = p / 4;
        y[4 + p] = p % 2;
        z[4 + p] = p / 2 % 2;
    }
    ex_put_coord(id, x, y, z);
    int corners[44] = {5,  7,  8,  6,  9,  10, 12, 11, 13, 14, 16, 15, 5,  6,  10,
                       9,  7,  11, 12, 8,  5,  9,  11, 7,  6,  8,  12, 10, 9,  10,
                       14, 13, 11, 15, 16, 12, 9,  13, 15, 11, 10, 12, 16, 14};
    int fours[11] = {4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4};
    ex_put_block(id, EX_FACE_BLOCK, 10, "nsided", 11, 44, 0, 0, 0);
    ex_put_conn(id, EX_FACE_BLOCK, 10, corners, 0, 0);
    ex_put_entity_count_per_polyhedra(id, EX_FACE_BLOCK, 10, fours);
    int tetrahedron[4] = {1, 2, 3, 4};
    ex_put_block(id, EX_ELEM_BLOCK, 1, "TET4", 1, 4, 0, 0, 0);
    ex_put_conn(id, EX_ELEM_BLOCK, 1, tetrahedron, 0, 0);
    int faces[12] = {1, 2, 4, 5, 6, 7, 2, 3, 8, 9, 10, 11}, sixes[2] = {6, 6};
    ex_put_block(id, EX_ELEM_BLOCK, 20, "nfaced", 2, 0, 0, 12, 0);
    ex_put_conn(id, EX_ELEM_BLOCK, 20, 0, 0, faces);
    ex_put_entity_count_per_polyhedra(id, EX_ELEM_BLOCK, 20, sixes);
    char* variables[] = {"FillTime"};
    ex_put_variable_param(id, EX_ELEM_BLOCK, 1);
    ex_put_variable_names(id, EX_ELEM_BLOCK, 1, variables);
    double time = 0, values[3] = {0.1, 0.2, 0.3};
    ex_put_time(id, 1, &time);
    ex_put_var(id, 1, EX_ELEM_BLOCK, 1, 1, 1, values);
    ex_put_var(id, 1, EX_ELEM_BLOCK, 1, 20, 2, &values[1]);
    return ex_close(id);
}
