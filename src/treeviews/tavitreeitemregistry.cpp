// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeitemregistry_p.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t page_size = 1024;

struct Page {
    std::array<TaviTreeItem *, page_size> items{};
    std::size_t alive = 0;
};

std::vector<std::unique_ptr<Page>> &pages()
{
    static auto *const table = new std::vector<std::unique_ptr<Page>>;
    return *table;
}

} // namespace

void TaviTreeItemRegistry::enter(int id, TaviTreeItem *item)
{
    auto &table = pages();
    const auto number = static_cast<std::size_t>(id);
    const std::size_t page = number / page_size;
    if (page >= table.size())
        table.resize(page + 1);
    if (!table[page])
        table[page] = std::make_unique<Page>();
    table[page]->items[number % page_size] = item;
    ++table[page]->alive;
}

void TaviTreeItemRegistry::strikeOut(int id)
{
    auto &page = pages()[static_cast<std::size_t>(id) / page_size];
    page->items[static_cast<std::size_t>(id) % page_size] = nullptr;
    if (--page->alive == 0)
        page.reset();
}

TaviTreeItem *TaviTreeItemRegistry::item(int id)
{
    const auto &table = pages();
    const auto number = static_cast<std::size_t>(id);
    if (id < 0 || number / page_size >= table.size() || !table[number / page_size])
        return nullptr;
    return table[number / page_size]->items[number % page_size];
}
