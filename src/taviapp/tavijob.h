// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_TAVIJOB_H
#define TAVIAPP_TAVIJOB_H

#include "taviapp/taviapp_export.h"
#include "tavilib/tavirecords.h"

#include <string>
#include <utility>

/// Operations on jobs (packet type 21): their name, their output pages, and the colour check that a page carries.
///
/// @code
/// if (const TAVIOUTPUTPAGE *page = TAVIJOB_CC::outputpageOfType(job, TAVIPAGE_CALIBRATION)) {
///     if (page->calibration)
///         show(page->calibration->results);
/// }
/// @endcode
///
/// Nothing throws. Lists are not synchronised: use each job on one thread.
class TAVIAPP_EXPORT TAVIJOB_CC
{
public:
    /// A job without pages, the caller's. A null name stays null. Null if memory is out.
    static TAVIJOB *newJob(const char *name);

    /// The first output page of kind @a page_type; the job keeps it. Null if it has none, and for a null job.
    /// O(pages).
    static TAVIOUTPUTPAGE *outputpageOfType(TAVIJOB *job, uint32_t page_type);
    /// The same for a job that is not to be changed.
    static const TAVIOUTPUTPAGE *outputpageOfType(const TAVIJOB *job, uint32_t page_type);

    /// Appends a page of kind @a page_type with a colour check, which the page owns from now on; it may be null.
    /// Returns the page, which the job keeps; null, with the check freed, if memory is out or the job is null.
    static TAVIOUTPUTPAGE *addOutputpage(TAVIJOB *job, uint32_t page_type, CALCHECKRECORD *calibration);

    /// A colour check to be kept (packet type 1003), the caller's: measured at @a date (seconds since 1970, UTC),
    /// with copies of the chart, of the list of measurements and of the results, each of which may be null. Null if
    /// memory is out.
    static CALCHECKRECORD *newCalibration(int64_t date, const CALCHECKCHART *chart, const TAVICOMBOCOLOUR *measured,
                                          const CALCHECKRESULT *results);
};

/// What is set up about a media: its name, and the colour check that is kept with it. Or nothing, as at first.
///
/// Copies are deep; where memory is out, a copy has no colour check. Use each object on one thread.
class TAVIAPP_EXPORT MEDIASETUP_CC
{
public:
    /// No media.
    MEDIASETUP_CC() = default;
    /// The media @a name, in UTF-8, without a colour check.
    explicit MEDIASETUP_CC(std::string name) : set_(true), name_(std::move(name)) {}
    MEDIASETUP_CC(const MEDIASETUP_CC &other);
    MEDIASETUP_CC &operator=(const MEDIASETUP_CC &other);
    /// Leaves @a other without a media.
    MEDIASETUP_CC(MEDIASETUP_CC &&other) noexcept;
    /// Leaves @a other without a media.
    MEDIASETUP_CC &operator=(MEDIASETUP_CC &&other) noexcept;
    ~MEDIASETUP_CC();

    /// Whether there is a media.
    bool isSet() const { return set_; }
    /// Back to no media.
    void clear();

    /// In UTF-8; empty without a media.
    const std::string &name() const { return name_; }
    /// The colour check kept with the media, which keeps it; null for none.
    const CALCHECKRECORD *calibration() const { return calibration_; }
    /// Takes a colour check over in place of the one that was there; null for none.
    void setCalibration(CALCHECKRECORD *calibration);

private:
    bool set_ = false;
    std::string name_;
    CALCHECKRECORD *calibration_ = nullptr; ///< Owned: a packet, which only the packet functions can free.
};

#endif
