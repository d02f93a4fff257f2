// SPDX-License-Identifier: MIT
#include "instruments/spectrobuddy.h"

#include <QtWidgets>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QGroupBox box;
    SpectroBuddy buddy(&box, true);
    QObject::connect(&buddy, &SpectroBuddy::spotLab,
                     [&box](double L, double, double) { QTextStream(stdout) << box.title() << ' ' << L << '\n'; });
    buddy.fireSpotLab(50, 1, 2);
}
