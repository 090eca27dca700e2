/* Smooths one step of a black and white edge, and prints the row below it. */
#include <nevrel.h>
#include <stdio.h>

enum { width = 8, height = 3 };

int main(void) {
    uint8_t cel[height][width][4], smoothed[height][width][4];
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint8_t white = y == 0 || (y == 1 && x < 4) ? 255 : 0;
            for (int c = 0; c < 3; ++c) cel[y][x][c] = white;
            cel[y][x][3] = 255;
        }
    }

    nevrel_settings settings;
    if (nevrel_settings_init(&settings, sizeof settings) != NEVREL_OK) return 1;
    const nevrel_image in = {cel, sizeof cel[0]}, out = {smoothed, sizeof smoothed[0]};
    const nevrel_status status =
        nevrel_smooth(&settings, NEVREL_RGBA, NEVREL_UINT8, width, height, &in, &out, NULL);
    printf("%s %s:", nevrel_version(), nevrel_status_text(status));
    for (int x = 0; x < width; ++x) printf(" %d", smoothed[1][x][0]);
    printf("\n");
    return status == NEVREL_OK ? 0 : 1;
}
