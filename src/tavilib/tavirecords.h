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
    TAVIPACKET_JOB = 21,
    TAVIPACKET_SPECTROPHOTOMETERINFO = 27,
    TAVIPACKET_PATCHDENSITY = 57,
    TAVIPACKET_CALCHECKCHART = 75,
    TAVIPACKET_CALCHECKRESULT = 88,
    /* Records that stand inside others; the codes are this library's own. */
    TAVIPACKET_CALCHECKSTATISTICS = 1001,
    TAVIPACKET_CALCHECKCRITERIA = 1002,
    TAVIPACKET_CALCHECKRECORD = 1003,
    TAVIPACKET_OUTPUTPAGE = 1004
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
    char *name;               /**< Patch name in UTF-8; null shows as "Untitled". */
    uint32_t flags;           /**< COMBOCOLOUR_FLAG_... bits. */
    uint32_t tolerances;      /**< Of dE and dH; the base library's, for the decoders of `calcheck.h`. Zero: none. */
    uint32_t rgb;             /**< Display colour, 0xAARRGGBB, as swatches draw it. */
    double L;                 /**< CIE L*, D50, 0..100. */
    double a;                 /**< CIE a*. */
    double b;                 /**< CIE b*. */
    float device[4];          /**< The first four device values; see #device_model. The base library's. */
    int32_t percent;          /**< Tint in percent; 100 on every patch made from a Lab measurement. */
    uint32_t device_model;    /**< COMBOCOLOUR_DEVICE_...: what #device holds. The base library's. */
    uint32_t device_count;    /**< How many device values there are, 0..8. The base library's. */
    float device_extra[4];    /**< Device values five to eight. The base library's. */
    uint32_t tolerances_more; /**< Of dC, and where they are from; as #tolerances. */
    uint32_t reserved;        /**< The base library's, zero. */
} TAVICOMBOCOLOUR;

/* ---------------------------------------------------------------------------------------------------------------- */

/** By which formula the overall difference dE is judged. Any value but the first two means CIEDE2000. */
typedef enum DELTAE_TYPE {
    DELTAE_CIE76 = 0, /**< The plain difference, dE*ab. */
    DELTAE_CIE94 = 1, /**< dE*94 with the weights of the graphic arts. */
    DELTAE_CIE2000 = 2,
    DELTAE_FORCE_32BIT = 0x7fffffff
} DELTAE_TYPE;

/** Bits of CALCHECKCHART::check_mask. */
enum {
    CALCHECK_MASK_DELTA_H = 1, /**< The hue difference dH is a part of the check, and of the judgement of each row. */
    CALCHECK_MASK_DELTA_C = 2  /**< The same for the chroma difference dC. */
};

/** The figures of a CALCHECKSTATISTICS and of a CALCHECKLIMITS, as bits. */
enum {
    CALCHECK_PAPER = 1,
    CALCHECK_CYAN = 2,
    CALCHECK_MAGENTA = 4,
    CALCHECK_YELLOW = 8,
    CALCHECK_BLACK = 16,
    CALCHECK_AVERAGE = 32,
    CALCHECK_MAX = 64,
    CALCHECK_DEVIATION = 128,
    CALCHECK_GRAY = 0x100,
    CALCHECK_GRAY_MAX = 0x200 /**< Not in CALCHECKSTATISTICS::passed, where CALCHECK_GRAY stands for both. */
};

/** Limits of one kind of delta. A figure that is equal to its limit is within it. */
typedef struct CALCHECKLIMITS {
    uint32_t limited; /**< CALCHECK_... bits of the figures that have a limit; the others are not looked at. */
    double paper;
    double cyan;
    double magenta;
    double yellow;
    double black;
    double average;
    double max;
    double deviation;
    double gray_max;
    double gray;
} CALCHECKLIMITS;

/** A criteria set: the limits that a check is judged by. Type code 1002. See `calcheckcriteria.h`. */
typedef struct CALCHECKCRITERIA {
    TAVIPACKETHEADER header;
    char *name;               /**< What a verdict names it by, such as "iso12647-7-2016". */
    char *standard;           /**< Such as "ISO 12647-7". Null for none. */
    char *edition;            /**< Such as "2016". Null for none. */
    DELTAE_TYPE delta_e_type; /**< The formula that the limits of `delta_e` are for. */
    CALCHECKLIMITS delta_e;
    CALCHECKLIMITS delta_h;
    CALCHECKLIMITS delta_c;
} CALCHECKCRITERIA;

/** What measurements are checked against. Type code 75. */
typedef struct CALCHECKCHART {
    TAVIPACKETHEADER header;
    char *name;                 /**< In UTF-8; may be null. */
    DELTAE_TYPE delta_e_type;   /**< The formula the chart is judged by. */
    TAVICOMBOCOLOUR *reference; /**< The reference patches, in the order in which they are measured. */
    uint32_t check_mask;        /**< CALCHECK_MASK_... bits. */
    CALCHECKCRITERIA *criteria; /**< The set it is judged by; null: see calcheckResults(). The base library's. */
} CALCHECKCHART;

/**
 * The figures of one kind of delta. Type code 1001. What each is stands at calcheckResults(). A figure for which the
 * chart has no patch is 0.
 */
typedef struct CALCHECKSTATISTICS {
    TAVIPACKETHEADER header;
    double paper;
    double cyan;
    double magenta;
    double yellow;
    double black;
    double average;
    double max;
    double deviation;
    uint32_t passed; /**< CALCHECK_... bits of the figures within their limits, and of those that have none. */
    double gray_max; /**< The base library's: the largest of the greys. */
    double gray;
    uint32_t present; /**< The base library's: bits of the figures for which there are patches. */
    uint32_t limited; /**< The base library's: bits of the figures that were judged by a limit. */
} CALCHECKSTATISTICS;

/** Bits of CALCHECKRESULT::flags. With one of the first three no check passes. */
enum {
    CALCHECKRESULT_NOT_JUDGED = 1,    /**< There are no limits for dE, so nothing is said to be within them. */
    CALCHECKRESULT_COUNTS_DIFFER = 2, /**< There are more reference patches than measured ones, or fewer. */
    CALCHECKRESULT_NO_COLOUR = 4,     /**< A patch has no colour, or one that is no number. */
    CALCHECKRESULT_BY_CHART = 8,      /**< Judged by the tolerances that the reference patches bring. */
    CALCHECKRESULT_SET_IN_PART = 16   /**< Some limits of the set were not judged: the chart has no such patches, or
                                           its mask leaves that delta out. */
};

/** What a check came to. Type code 88. */
typedef struct CALCHECKRESULT {
    TAVIPACKETHEADER header;
    uint32_t flags;              /**< CALCHECKRESULT_... bits. The base library's. */
    double score;                /**< 0..100; see calcheckResults(). */
    CALCHECKSTATISTICS *delta_e; /**< Never null. */
    CALCHECKSTATISTICS *delta_h; /**< Null: not a part of this chart. */
    CALCHECKSTATISTICS *delta_c; /**< Null: not a part of this chart. */
    CALCHECKCRITERIA *criteria;  /**< The set it was judged by; null for none. The base library's. */
    uint32_t patch_count;        /**< How many pairs of patches were compared. The base library's. */
} CALCHECKRESULT;

/* ---------------------------------------------------------------------------------------------------------------- */

/** A colour check that was made before and is kept with a job or a media. Type code 1003. */
typedef struct CALCHECKRECORD {
    TAVIPACKETHEADER header;
    int64_t date;              /**< When it was measured, in seconds since 1970 in UTC; 0: not known. */
    CALCHECKCHART *chart;      /**< What it was checked against; null: none. */
    TAVICOMBOCOLOUR *measured; /**< What was measured; null: nothing. */
    CALCHECKRESULT *results;   /**< What it came to then; null: not kept. */
} CALCHECKRECORD;

/** Kinds of output pages. */
enum {
    TAVIPAGE_CALIBRATION = 11 /**< The page that carries a colour check. */
};

/** A page that a job puts out. Type code 1004. */
typedef struct TAVIOUTPUTPAGE {
    TAVIPACKETHEADER header;
    uint32_t page_type;          /**< TAVIPAGE_... and others that are not looked at here. */
    CALCHECKRECORD *calibration; /**< The page's colour check; null: none. */
} TAVIOUTPUTPAGE;

/** What of a job the widgets read. Type code 21. */
typedef struct TAVIJOB {
    TAVIPACKETHEADER header;
    char *name;            /**< In UTF-8; may be null. */
    TAVIOUTPUTPAGE *pages; /**< In the order of output. */
} TAVIJOB;

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
