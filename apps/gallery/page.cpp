// SPDX-License-Identifier: MIT
#include "gallery/page.h"

QVector<Page> galleryPages()
{
    return {
        {"spectrobuddy", "SpectroBuddy",
         "The instrument box of a panel: chooses an instrument and delivers its colours.", makeSpectroBuddyPage},
        {"taviconfigorder", "TaviConfigOrder",
         "The dialog in which the user says which things show, and in what order.", makeTaviConfigOrderPage},
    };
}
