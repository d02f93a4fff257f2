/* SPDX-License-Identifier: MIT */
#ifndef TAVILIB_TAVIRECORDS_H
#define TAVILIB_TAVIRECORDS_H

/**
 * @file
 * The plain records that travel between instrument plug-ins, the base libraries and the widgets.
 *
 * This is a C header without Qt: an instrument plug-in includes it (by way of `instrumentplugin.h`) and nothing else.
 * The fields and their order are a binary contract. On a 32-bit i386 target the natural layout is the documented one
 * (doubles lie on 4-byte boundaries, there are no gaps); on 64-bit targets the same fields stand in the same order
 * with natural widths, and a byte count given here is what `sizeof` says there.
 *
 * Every record begins with a ::TAVIPACKETHEADER, is allocated with `calloc`, and is chained into singly linked lists
 * through the header's next pointer. A list is a pointer to its head; an empty list is a null pointer; whoever holds
 * the head owns the list. Strings inside a record are heap strings that the record owns.
 */

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The six words that every record begins with. All but `next` are the base library's own and left zero by makers. */
typedef struct TAVIPACKETHEADER {
    uint32_t reserved0;
    uint32_t reserved1;
    uint32_t reserved2;
    uint32_t reserved3;
    void *next; /**< The next record of the list, or null. */
    uint32_t reserved5;
} TAVIPACKETHEADER;

/** Type codes: what the free and duplicate operations of `tavipacket.h` need to know of a record. */
enum {
    TAVIPACKET_PAINTERCOLOUR = 2,
    TAVIPACKET_COMBOCOLOUR = 17,
    TAVIPACKET_COLOURCHECKRECORD = 21,
    TAVIPACKET_SPECTROPHOTOMETERINFO = 27,
    TAVIPACKET_PATCHDENSITY = 57,
    TAVIPACKET_CALCHECKCHART = 75,
    TAVIPACKET_CALCHECKRESULT = 88
};

/* ---------------------------------------------------------------------------------------------------------------- */

/** Capability bits of SPECTROPHOTOMETERINFO::flags. */
enum {
    SPECTRO_FLAG_LAB = 0x0001,         /**< Reads colour as Lab: a spectrophotometer. */
    SPECTRO_FLAG_DENSITY = 0x0002,     /**< Reads densities and linearisation: a densitometer. */
    SPECTRO_FLAG_STRIPREADER = 0x0008, /**< Reads strips. */
    SPECTRO_FLAG_SPOTDENSITY = 0x0010, /**< Exports SpectrophotometerReadSpotDensities. */
    SPECTRO_FLAG_SPOTLAB = 0x0020,     /**< Exports SpectrophotometerReadSpotLab. */
    SPECTRO_FLAG_MONITOR = 0x0040,     /**< A monitor calibrator. */
    SPECTRO_FLAG_XYZ = 0x0100,         /**< Exports MonitorCal_ReadXYZ. */
    SPECTRO_FLAG_CHART = 0x0200,       /**< Exports SpectrophotometerRead/GetComboColourChart. */
    SPECTRO_FLAG_LINCHARTGENERATOR =
        0x0400,                      /**< Exports SpectrophotometerGetLinChart in place of ...GetLinChartNames. */
    SPECTRO_FLAG_PRINTER = 0x1000,   /**< Exports SpectrophotometerPrintNReadComboColourChart. */
    SPECTRO_FLAG_FILESOURCE = 0x2000 /**< Delivers all values in one go and closes with the end marker. */
};

/** The identity card of an instrument plug-in. Type code 27; 40 bytes on 32-bit targets. */
typedef struct SPECTROPHOTOMETERINFO {
    TAVIPACKETHEADER header;
    char *name;         /**< Display name in UTF-8: combo boxes show it, settings store it, lists are sorted by it. */
    char *dll_filename; /**< File name without directory. Discovery fills it in; a plug-in leaves it null. */
    char *rev;          /**< Revision text, such as "1.03". */
    uint32_t flags;     /**< SPECTRO_FLAG_... bits. */
} SPECTROPHOTOMETERINFO;

/* ---------------------------------------------------------------------------------------------------------------- */

/** Bits of TAVICOMBOCOLOUR::flags. */
enum {
    COMBOCOLOUR_FLAG_LAB = 0x20,     /**< The Lab triple is valid. */
    COMBOCOLOUR_FLAG_CYAN = 0x80000, /**< The patch is the solid cyan of its reference; likewise the next. */
    COMBOCOLOUR_FLAG_MAGENTA = 0x100000,
    COMBOCOLOUR_FLAG_YELLOW = 0x200000,
    COMBOCOLOUR_FLAG_BLACK = 0x400000,
    COMBOCOLOUR_FLAG_PAPER = 0x800000, /**< The patch is the unprinted substrate. */
    COMBOCOLOUR_FLAG_GREY = 0x2000000  /**< The patch is a grey composed of cyan, magenta and yellow. */
};

/** What the device values of a TAVICOMBOCOLOUR are. */
enum {
    COMBOCOLOUR_DEVICE_NONE = 0, /**< The patch has no device values. */
    COMBOCOLOUR_DEVICE_GRAY = 1, /**< One channel, as the file gives it. */
    COMBOCOLOUR_DEVICE_RGB = 3,  /**< Red, green, blue as the file gives them (0..100 or 0..255). */
    COMBOCOLOUR_DEVICE_CMYK = 4, /**< Cyan, magenta, yellow, black in percent. */
    COMBOCOLOUR_DEVICE_NCLR = 5, /**< Up to eight inks in percent, in the file's order. */
    COMBOCOLOUR_DEVICE_CMY = 6   /**< Cyan, magenta, yellow in percent. */
};

/** One colour patch of a chart, a reference or a measurement. Type code 17; 116 bytes on 32-bit targets. */
typedef struct TAVICOMBOCOLOUR {
    TAVIPACKETHEADER header;
    char *name;            /**< Patch name in UTF-8; null shows as "Untitled". */
    uint32_t flags;        /**< COMBOCOLOUR_FLAG_... bits. */
    uint32_t tolerances;   /**< The base library's; zero where the chart brings none. */
    uint32_t rgb;          /**< Display colour, 0xAARRGGBB, as swatches draw it. */
    double L;              /**< CIE L*, D50, 0..100. */
    double a;              /**< CIE a*. */
    double b;              /**< CIE b*. */
    float device[4];       /**< The first four device values; see #device_model. The base library's. */
    int32_t percent;       /**< Tint in percent; 100 on every patch made from a Lab measurement. */
    uint32_t device_model; /**< COMBOCOLOUR_DEVICE_...: what #device holds. The base library's. */
    uint32_t device_count; /**< How many device values there are, 0..8. The base library's. */
    float device_extra[4]; /**< Device values five to eight. The base library's. */
    uint32_t reserved[2];  /**< The base library's, zero. */
} TAVICOMBOCOLOUR;

/* ---------------------------------------------------------------------------------------------------------------- */

/**
 * Separations, as density readings name them. Which channel a value selects differs between spot readings and
 * linearisation on 0, 4 and 6; see `instruments/spectro_fromfile.h`.
 */
typedef enum SPECTROSEPTYPE {
    SPECTROSEP_BLACK = 0,
    SPECTROSEP_CYAN = 1,
    SPECTROSEP_MAGENTA = 2,
    SPECTROSEP_YELLOW = 3,
    SPECTROSEP_ORANGE = 4,
    SPECTROSEP_LIGHT_CYAN = 5,
    SPECTROSEP_GREEN = 6,
    SPECTROSEP_LIGHT_MAGENTA = 7,
    SPECTROSEP_NONE = 8, /**< A separation no density filter stands for. */
    SPECTROSEP_FORCE_32BIT = 0x7fffffff
} SPECTROSEPTYPE;

/** One density reading. Type code 57; 76 bytes on 32-bit targets. The channel order is K, C, M, Y in every record. */
typedef struct PATCHDENSITY {
    TAVIPACKETHEADER header;
    SPECTROSEPTYPE sep_type; /**< The separation this reading is for. */
    uint32_t sep_index;      /**< Index of the separation in the DENSITYLUT; 0 for spot readings. */
    int32_t patch_index; /**< Index of the patch in the separation; 0 for spot readings; negative: a bad reading. */
    double density;      /**< The density selected for #sep_type. */
    double density_k;
    double density_c;
    double density_m;
    double density_y;
} PATCHDENSITY;

/** Density standards; the values are the indices of the standard combo box and travel through settings. */
typedef enum DENSITYSTANDARD {
    DENSITYSTANDARD_DEFAULT = 0,
    DENSITYSTANDARD_STATUS_A = 1,
    DENSITYSTANDARD_STATUS_E = 2,
    DENSITYSTANDARD_STATUS_I = 3,
    DENSITYSTANDARD_STATUS_T = 4,
    DENSITYSTANDARD_FORCE_32BIT = 0x7fffffff
} DENSITYSTANDARD;

/** What ink a separation of a DENSITYLUT is printed with. */
enum {
    TAVIBANDTYPE_CYAN = 0,
    TAVIBANDTYPE_MAGENTA = 1,
    TAVIBANDTYPE_YELLOW = 2,
    TAVIBANDTYPE_BLACK = 3,
    TAVIBANDTYPE_LIGHT_CYAN = 4,
    TAVIBANDTYPE_LIGHT_MAGENTA = 5,
    TAVIBANDTYPE_LIGHT_BLACK = 6,
    TAVIBANDTYPE_ORANGE = 7,
    TAVIBANDTYPE_GREEN = 8,
    TAVIBANDTYPE_SPOT = 9
};

/** One separation of a DENSITYLUT. 140 bytes on 32-bit targets. */
typedef struct DENSITYLUTBAND {
    uint32_t band_type;    /**< TAVIBANDTYPE_... */
    uint32_t reserved;     /**< The base library's, zero. */
    char name[64];         /**< Ink name in UTF-8, zero-terminated. */
    uint32_t target_count; /**< How many of #target are set, 0..8. */
    double target[8];      /**< Aimed-at densities at evenly spaced tints up to the solid. */
} DENSITYLUTBAND;

/** The linearisation target: which separations are read, and what each should come to. */
typedef struct DENSITYLUT {
    TAVIPACKETHEADER header;
    uint32_t separation_count; /**< How many #bands there are. */
    DENSITYLUTBAND *bands;     /**< Array, owned by the record. */
} DENSITYLUT;

/* ---------------------------------------------------------------------------------------------------------------- */

/** Display kinds of a monitor calibrator. */
typedef enum SPECTRODISPLAYTYPE {
    SPECTRODISPLAYTYPE_CRT = 0,
    SPECTRODISPLAYTYPE_LCD = 1,
    SPECTRODISPLAYTYPE_RAW = 2,
    SPECTRODISPLAYTYPE_FORCE_32BIT = 0x7fffffff
} SPECTRODISPLAYTYPE;

/** How a monitor is measured; 1 needs no black and white steps on the screen for its calibration. */
typedef enum SPECTRODISPLAYMEASUREMENT_TYPE {
    SPECTRODISPLAYMEASUREMENT_DEFAULT = 0,
    SPECTRODISPLAYMEASUREMENT_NO_SCREEN_STEPS = 1,
    SPECTRODISPLAYMEASUREMENT_FORCE_32BIT = 0x7fffffff
} SPECTRODISPLAYMEASUREMENT_TYPE;

/** Colour space of a print server; handed to plug-ins unchanged. */
typedef enum SERVER_COLOURSPACE {
    SERVER_COLOURSPACE_UNKNOWN = 0,
    SERVER_COLOURSPACE_GRAY = 1,
    SERVER_COLOURSPACE_RGB = 3,
    SERVER_COLOURSPACE_CMYK = 4,
    SERVER_COLOURSPACE_NCLR = 5,
    SERVER_COLOURSPACE_FORCE_32BIT = 0x7fffffff
} SERVER_COLOURSPACE;

/** A record key: two words, copied word by word. The key of two zeros is the null key; see `taviapp/tavikey_cc.h`. */
typedef struct TAVIKEY_ELEMENT {
    uint32_t word0;
    uint32_t word1;
} TAVIKEY_ELEMENT;

/** The application's connection to a print server: passed through, never looked into. */
typedef struct TaviCommServer TaviCommServer;

#ifdef __cplusplus
}
#endif

#endif
