// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_SPECTROBUDDYSTATUSWATCH_P_H
#define INSTRUMENTS_SPECTROBUDDYSTATUSWATCH_P_H

#include "instruments/spectrobuddy.h"

#include <QPointer>

/// Remembers over an operation whether the instrument was on, and whether the buddy is still there.
class SpectroBuddyStatusWatch
{
public:
    explicit SpectroBuddyStatusWatch(SpectroBuddy *buddy) : buddy_(buddy), was_on_(buddy->instrument.enabled()) {}

    /// Whether the instrument was on when last looked at.
    bool wasOn() const { return was_on_; }
    /// Whether the buddy has survived what ran since: a slot, a dialog.
    bool isAlive() const { return !buddy_.isNull(); }
    /// Emits instrumentStatusChanged() if the state is another than when last looked at. False if the buddy is gone,
    /// also by what a slot did.
    bool report()
    {
        if (buddy_ && buddy_->instrument.enabled() != was_on_) {
            was_on_ = !was_on_;
            Q_EMIT buddy_->instrumentStatusChanged(was_on_);
        }
        return isAlive();
    }

private:
    const QPointer<SpectroBuddy> buddy_;
    bool was_on_;
};

#endif
