// SPDX-License-Identifier: MIT
#include "taviapp/tavijob.h"

#include "tavilib/tavialloc_p.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"

#include <utility>

TAVIJOB *TAVIJOB_CC::newJob(const char *name)
{
    auto *job = TaviAllocRecord<TAVIJOB>();
    if (!job || !name)
        return job;
    job->name = AllocateAndCopyStringConst(name);
    if (job->name)
        return job;
    TaviPacketFreeItem(job, TAVIPACKET_JOB);
    return nullptr;
}

TAVIOUTPUTPAGE *TAVIJOB_CC::outputpageOfType(TAVIJOB *job, uint32_t page_type)
{
    return const_cast<TAVIOUTPUTPAGE *>(outputpageOfType(static_cast<const TAVIJOB *>(job), page_type));
}

const TAVIOUTPUTPAGE *TAVIJOB_CC::outputpageOfType(const TAVIJOB *job, uint32_t page_type)
{
    const TAVIOUTPUTPAGE *page = job ? job->pages : nullptr;
    while (page && page->page_type != page_type)
        page = NextInList(page);
    return page;
}

TAVIOUTPUTPAGE *TAVIJOB_CC::addOutputpage(TAVIJOB *job, uint32_t page_type, CALCHECKRECORD *calibration)
{
    auto *page = job ? TaviAllocRecord<TAVIOUTPUTPAGE>() : nullptr;
    if (!page) {
        TaviPacketFreeItem(calibration, TAVIPACKET_CALCHECKRECORD);
        return nullptr;
    }
    page->page_type = page_type;
    page->calibration = calibration;
    AddList(&job->pages, page);
    return page;
}

CALCHECKRECORD *TAVIJOB_CC::newCalibration(int64_t date, const CALCHECKCHART *chart, const TAVICOMBOCOLOUR *measured,
                                           const CALCHECKRESULT *results)
{
    auto *record = TaviAllocRecord<CALCHECKRECORD>();
    if (!record)
        return nullptr;
    record->date = date;
    record->chart = DuplicatePacketItem(TAVIPACKET_CALCHECKCHART, chart);
    record->measured = DuplicatePacketList(TAVIPACKET_COMBOCOLOUR, measured);
    record->results = DuplicatePacketItem(TAVIPACKET_CALCHECKRESULT, results);
    if ((record->chart || !chart) && (record->measured || !measured) && (record->results || !results))
        return record;
    TaviPacketFreeItem(record, TAVIPACKET_CALCHECKRECORD);
    return nullptr;
}

MEDIASETUP_CC::MEDIASETUP_CC(const MEDIASETUP_CC &other)
    : set_(other.set_), name_(other.name_),
      calibration_(DuplicatePacketItem(TAVIPACKET_CALCHECKRECORD, other.calibration()))
{}

MEDIASETUP_CC &MEDIASETUP_CC::operator=(const MEDIASETUP_CC &other)
{
    if (this != &other)
        *this = MEDIASETUP_CC(other);
    return *this;
}

MEDIASETUP_CC::MEDIASETUP_CC(MEDIASETUP_CC &&other) noexcept
{
    *this = std::move(other);
}

MEDIASETUP_CC &MEDIASETUP_CC::operator=(MEDIASETUP_CC &&other) noexcept
{
    if (this == &other)
        return *this;
    setCalibration(std::exchange(other.calibration_, nullptr));
    set_ = other.set_;
    name_ = std::move(other.name_);
    other.clear();
    return *this;
}

MEDIASETUP_CC::~MEDIASETUP_CC()
{
    setCalibration(nullptr);
}

void MEDIASETUP_CC::clear()
{
    set_ = false;
    name_.clear();
    setCalibration(nullptr);
}

void MEDIASETUP_CC::setCalibration(CALCHECKRECORD *calibration)
{
    if (calibration == calibration_)
        return;
    TaviPacketFreeItem(calibration_, TAVIPACKET_CALCHECKRECORD);
    calibration_ = calibration;
}
