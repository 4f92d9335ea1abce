/* Makes row.exo by the Exodus library: gcc row.c -lexoIIv2c && ./a.out
 * Three unit cubes in a row along x, two in the block "melt" and one in "runner"; side sets at both
 * ends; FillTime and alpha.melt on the elements at the times 0, 1 and 3. */
#include <exodusII.h>

int main(void) {
    int computer = 8, file = 8;
    int id = ex_create("row.exo", EX_CLOBBER, &computer, &file);
    double x[16], y[16], z[16];
    for (int p = 0; p < 16; ++p) {
        x[p] = p / 4;
        y[p] = p % 2;
        z[p] = p / 2 % 2;
    }
    ex_put_init(id, "row of cubes", 3, 16, 3, 2, 0, 2);
    ex_put_coord(id, x, y, z);
    int melt[16] = {1, 5, 6, 2, 3, 7, 8, 4, 5, 9, 10, 6, 7, 11, 12, 8};
    int runner[8] = {9, 13, 14, 10, 11, 15, 16, 12};
    ex_put_block(id, EX_ELEM_BLOCK, 1, "HEX8", 2, 8, 0, 0, 0);
    ex_put_block(id, EX_ELEM_BLOCK, 7, "HEX8", 1, 8, 0, 0, 0);
    ex_put_conn(id, EX_ELEM_BLOCK, 1, melt, 0, 0);
    ex_put_conn(id, EX_ELEM_BLOCK, 7, runner, 0, 0);
    char* blocks[] = {"melt", "runner"};
    ex_put_names(id, EX_ELEM_BLOCK, blocks);
    int first = 1, firstSide = 4, last = 3, lastSide = 2;
    ex_put_set_param(id, EX_SIDE_SET, 10, 1, 0);
    ex_put_set(id, EX_SIDE_SET, 10, &first, &firstSide);
    ex_put_set_param(id, EX_SIDE_SET, 20, 1, 0);
    ex_put_set(id, EX_SIDE_SET, 20, &last, &lastSide);
    char* sets[] = {"gate", "vent"};
    ex_put_names(id, EX_SIDE_SET, sets);
    char* variables[] = {"FillTime", "alpha.melt"};
    ex_put_variable_param(id, EX_ELEM_BLOCK, 2);
    ex_put_variable_names(id, EX_ELEM_BLOCK, 2, variables);
    double times[3] = {0, 1, 3};
    double fill[3][3] = {{0, 0, 0}, {0.1, 0, 0}, {0.1, 1.7, 2.3}};
    double alpha[3][3] = {{0, 0, 0}, {1, 0.25, 0}, {1, 0.75, 1}};
    for (int t = 0; t < 3; ++t) {
        ex_put_time(id, t + 1, &times[t]);
        ex_put_var(id, t + 1, EX_ELEM_BLOCK, 1, 1, 2, fill[t]);
        ex_put_var(id, t + 1, EX_ELEM_BLOCK, 1, 7, 1, &fill[t][2]);
        ex_put_var(id, t + 1, EX_ELEM_BLOCK, 2, 1, 2, alpha[t]);
        ex_put_var(id, t + 1, EX_ELEM_BLOCK, 2, 7, 1, &alpha[t][2]);
    }
    return ex_close(id);
}
