/* The C interface of the nevrel core: smooths the stair-stepped edges of one image at a time.
 *
 *     nevrel_settings settings;
 *     nevrel_settings_init(&settings, sizeof settings);
 *     settings.softness = 80;
 *     nevrel_image in = {pixels, width * 4}, out = {smoothed, width * 4};
 *     nevrel_status status = nevrel_smooth(&settings, NEVREL_RGBA, NEVREL_UINT8, width, height,
 *                                          &in, &out, NULL);
 *     if (status != NEVREL_OK) fputs(nevrel_status_text(status), stderr);
 *
 * Functions may be called from any number of threads at once, as long as no two of them write the
 * same memory; there is no state between calls. No call throws, prints or ends the program. The
 * same image and settings give the same bytes on every machine.
 */
#ifndef NEVREL_H
#define NEVREL_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define NEVREL_ENUM : int32_t /* so that C++ too may be handed any value */
extern "C" {
#else
#define NEVREL_ENUM
#endif

#define NEVREL_VERSION_MAJOR 1
#define NEVREL_VERSION_MINOR 0
#define NEVREL_VERSION_PATCH 8

#if defined(_WIN32) && defined(NEVREL_SHARED)
#ifdef NEVREL_BUILDING
#define NEVREL_API __declspec(dllexport)
#else
#define NEVREL_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define NEVREL_API __attribute__((visibility("default")))
#else
#define NEVREL_API
#endif

/* What comes back. With any but NEVREL_OK and NEVREL_CANCELLED nothing has been written. */
typedef enum nevrel_status NEVREL_ENUM {
    NEVREL_OK = 0,            /* done */
    NEVREL_BAD_ARGUMENT = 1,  /* a null pointer, an unknown constant, a struct of no known size,
                                 or a colour key for an order without alpha */
    NEVREL_BAD_SIZE = 2,      /* width or height below 1 or above NEVREL_LARGEST_SIDE, or an image
                                 that does not fit the address space */
    NEVREL_BAD_STRIDE = 3,    /* rows that overlap, or pixels that are not aligned to a sample */
    NEVREL_BAD_SETTING = 4,   /* a control outside its range */
    NEVREL_OVERLAP = 5,       /* input and output share memory without being the same */
    NEVREL_OUT_OF_MEMORY = 6, /* the allocation of the scratch memory has failed */
    NEVREL_CANCELLED = 7      /* by the progress callback; what the output holds is undefined */
} nevrel_status;

/* A text for people, in English, of one line without a line end. Never null, for unknown values
 * too; lives as long as the program. */
NEVREL_API const char* nevrel_status_text(nevrel_status status);

/* The version of the library that is running, such as "1.0.8"; lives as long as the program. */
NEVREL_API const char* nevrel_version(void);

/* ---- Controls ---------------------------------------------------------------------------- */

/* The values of the controls, on the 8-bit scale of the effect at every sample type. Later versions
 * may add fields behind the last one, in which 0 stands for what this version does. */
typedef struct nevrel_settings {
    uint32_t size;            /* of this struct in bytes, set by nevrel_settings_init */
    int32_t color_threshold;  /* 1..255: two neighbours whose colours differ by more form an edge */
    int32_t softness;         /* 0..100: how far edges are blended along their steps; 0 is off */
    int32_t bias;             /* 0..100: how fast the blend falls off along a step */
    int32_t color_key_enable; /* 0 or 1: pixels of the key colour become transparent */
    int32_t key_red;          /* 0..255 */
    int32_t key_green;
    int32_t key_blue;
    int32_t key_threshold; /* 0..255: largest distance that still counts as the key colour */
    int32_t key_invert;    /* 0 or 1: the pixels that do not match become transparent instead */
} nevrel_settings;

/* Sets `*settings` to the defaults. `size` is sizeof(nevrel_settings) as the caller was compiled:
 * exactly so many bytes are written; fields that the library does not know become 0.
 * NEVREL_BAD_ARGUMENT, with nothing written: `settings` is null, or no version has that size. */
NEVREL_API nevrel_status nevrel_settings_init(nevrel_settings* settings, size_t size);

typedef enum nevrel_control_kind NEVREL_ENUM {
    NEVREL_SLIDER = 0,   /* an integer from minimum to maximum */
    NEVREL_CHECKBOX = 1, /* 0 or 1 */
    NEVREL_COLOR = 2     /* three fields, red, green and blue, 0..255 each */
} nevrel_control_kind;

/* One control as a user interface shows it. The texts are in English and never null. Later versions
 * may add fields behind the last one. */
typedef struct nevrel_control {
    const char* name;        /* as users know it: "color threshold" */
    const char* key;         /* for scripts, [a-z_] only: "color_threshold" */
    const char* description; /* one sentence */
    nevrel_control_kind kind;
    int32_t minimum; /* of each field */
    int32_t maximum;
    int32_t default_value[3]; /* of a colour red, green, blue; of the others the first */
    size_t offset;            /* of the first field in nevrel_settings; a colour's follow */
    int32_t in_key_group;     /* 1 for those that belong to the colour key, else 0 */
} nevrel_control;

/* The number of controls. */
NEVREL_API size_t nevrel_control_count(void);

/* The controls in the order in which they are shown, from index 0 on; null for an index past the
 * last one. What it points to is constant and lives as long as the program. */
NEVREL_API const nevrel_control* nevrel_control_at(size_t index);

/* ---- Images ------------------------------------------------------------------------------ */

/* The order of the channels of a pixel in memory. Colour is straight but for the last order, in
 * which it is multiplied by alpha: it is divided, smoothed and multiplied again, and stands as it
 * is where alpha is 0. RGB is smoothed as an opaque image. */
typedef enum nevrel_order NEVREL_ENUM {
    NEVREL_RGBA = 0,
    NEVREL_ARGB = 1,
    NEVREL_BGRA = 2,
    NEVREL_RGB = 3,
    NEVREL_RGBA_PREMULTIPLIED = 4
} nevrel_order;

/* The samples of every channel, in the byte order of the machine. */
typedef enum nevrel_sample NEVREL_ENUM {
    NEVREL_UINT8 = 0,        /* 0..255 */
    NEVREL_UINT16 = 1,       /* 0..65535 */
    NEVREL_UINT16_32768 = 2, /* 0..32768 */
    NEVREL_HALF = 3,         /* IEEE 754 binary16; 1.0 is full intensity, any value may occur */
    NEVREL_FLOAT = 4         /* IEEE 754 binary32; likewise */
} nevrel_sample;

/* Pixels lie in a row without gaps, aligned to a sample; bytes between rows are neither read nor
 * written. */
typedef struct nevrel_image {
    void* pixels;        /* the top left pixel; not written where the image is the input only */
    ptrdiff_t row_bytes; /* from a row to the one below, negative where rows run upwards; does not
                            count where there is but one row */
} nevrel_image;

/* The largest width or height, in pixels. */
#define NEVREL_LARGEST_SIDE (1 << 28)

/* ---- Smoothing --------------------------------------------------------------------------- */

/* What a call may use of its caller; all zeros for none of it. All are called on the thread of the
 * call, and must return. */
typedef struct nevrel_callbacks {
    void* context; /* handed to each of them */

    /* Gives memory aligned like malloc's, or null; called once at most. Null: malloc. */
    void* (*allocate)(void* context, size_t bytes);

    /* Takes back what `allocate` gave, before the call returns. The two come together. */
    void (*release)(void* context, void* memory);

    /* Called before the first row is smoothed and then between bands of rows: `rows_done` of `rows`
     * are smoothed, growing from 0 on and below `rows`. Non-zero cancels. May be null. */
    int (*progress)(void* context, int32_t rows_done, int32_t rows);
} nevrel_callbacks;

/* Smooths `*input` into `*output`, two images of this size, order and sample type. They are the
 * same (pixels and row_bytes are equal) or share no memory.
 *
 * `settings` null means the defaults, `callbacks` null none. Samples that the effect leaves alone
 * are in the output bit for bit as in the input. Allocates about half a byte a pixel, and
 * besides for
 *   - NEVREL_RGB, NEVREL_RGBA_PREMULTIPLIED, NEVREL_UINT16 and NEVREL_HALF two copies of the image
 *     with four channels, of float samples for NEVREL_HALF;
 *   - anything else, unless it is NEVREL_ARGB and the output is not the input, one copy.
 *
 * Any status may come back; whatever is wrong is found before anything is written. */
NEVREL_API nevrel_status nevrel_smooth(const nevrel_settings* settings, nevrel_order order,
                                       nevrel_sample sample, int32_t width, int32_t height,
                                       const nevrel_image* input, const nevrel_image* output,
                                       const nevrel_callbacks* callbacks);

#ifdef __cplusplus
}
#endif
#endif
