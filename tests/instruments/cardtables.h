// SPDX-License-Identifier: MIT
#ifndef TESTS_INSTRUMENTS_CARDTABLES_H
#define TESTS_INSTRUMENTS_CARDTABLES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

/// The gamma tables of the test display's card, asked of the X server by a connection of the test's own.
namespace CardTables {

/// Red, green and blue entries.
using Table = std::array<std::vector<std::uint16_t>, 3>;

/// A table like no other: of @a size entries, another curve in each channel, with odd numbers everywhere.
Table curves(std::size_t size, double exponent);
/// The straight line from 0 to 65535.
Table straight(std::size_t size);

/// What the output of this name has; an empty table if it is off.
Table read(const char *output);
/// Gives it another.
void write(const char *output, const Table &table);
/// What a part of the card (CRTC) has, by its number among all.
Table readCrtc(int number);
void writeCrtc(int number, const Table &table);
/// The server's number of the output of this name.
std::uint32_t outputId(const char *name);

/// Keeps the tables of both outputs while it lives.
class Keeper
{
public:
    Keeper() : first_(read("DUMMY0")), second_(read("DUMMY1")) {}
    ~Keeper()
    {
        write("DUMMY0", first_);
        write("DUMMY1", second_);
    }
    Keeper(const Keeper &) = delete;
    Keeper &operator=(const Keeper &) = delete;

private:
    Table first_;
    Table second_;
};

} // namespace CardTables

#endif
