// SPDX-License-Identifier: MIT
#include "qt3/q3ptrlist.h"

#include <QString>
#include <QTextStream>

int main()
{
    Q3PtrList<QString> inks;
    inks.setAutoDelete(true);
    inks.append(new QString("magenta"));
    inks.prepend(new QString("cyan"));
    for (Q3PtrListIterator<QString> ink(inks); ink.current(); ++ink)
        QTextStream(stdout) << *ink.current() << '\n';
}
