// SPDX-License-Identifier: MIT

/// The tree view with its model against the two trees that Qt offers for the same work: a QStandardItemModel behind a
/// recursive QSortFilterProxyModel in a QTreeView, and a QTreeWidget whose rows are hidden one by one. All four
/// columns are searched for a piece of text in any case. Every figure is the time until the view has been painted.
///
/// The first letter keeps one row in seven, the second one in fifty. Flat trees have the given number of rows; the
/// deep tree has 10,000 branches of ten rows each.

#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeview.h"

#include <QApplication>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int deep_parents = 10000;
constexpr int deep_children = 10;

QStringList makeTexts(int row)
{
    static const char *const words[] = {"zinc", "copper", "brass", "iron", "gold", "lead", "tin"};
    static const char letters[] = "abcdefg";
    QString word = QString::fromLatin1(words[row % 7]);
    if (row % 7 == 0)
        word[1] = QLatin1Char(letters[row / 7 % 7]);
    return {QStringLiteral("row %1").arg(row), QStringLiteral("C %1 M %2").arg(row % 101).arg(row % 97), word,
            QString::number(row * 0.37, 'f', 2)};
}

/// The texts of a row, made once for all.
const QStringList &textsOf(int row)
{
    static std::vector<QStringList> all;
    for (int i = static_cast<int>(all.size()); i <= row; ++i)
        all.push_back(makeTexts(i));
    return all[static_cast<size_t>(row)];
}

const QString first_key = QStringLiteral("z");
const QString second_key = QStringLiteral("za");

/// What is measured, for one kind of tree.
class Subject
{
public:
    virtual ~Subject() = default;
    virtual void load(int parents, int children) = 0;
    virtual void appendOne(int row) = 0;
    virtual void filter(const QString &keyword) = 0;
    virtual void expandAll() = 0;
    virtual int visibleTopRows() const = 0;
    virtual QTreeView *view() = 0;

    /// Of the top level of a flat tree, or below the first row of a deep one.
    int visibleRows()
    {
        const QModelIndex first = view()->model()->index(0, 0);
        if (!view()->model()->hasChildren(first))
            return visibleTopRows();
        int count = 0;
        for (int row = 0; row < view()->model()->rowCount(first); ++row)
            count += view()->isRowHidden(row, first) ? 0 : 1;
        return count;
    }

    void show()
    {
        view()->setUniformRowHeights(true);
        view()->resize(500, 700);
        view()->show();
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        paint();
    }
    void paint()
    {
        QCoreApplication::sendPostedEvents();
        view()->viewport()->repaint();
    }
};

class TaviSubject : public Subject
{
public:
    explicit TaviSubject(bool with_status_line = false)
    {
        view_.setModel(&model_);
        view_.addFilterLineEdit(&line_edit_);
        if (with_status_line)
            view_.widget()->show();
    }
    ~TaviSubject() override
    {
        // The container of the status line has become the view's parent.
        QWidget *container = view_.parentWidget();
        view_.setParent(nullptr);
        delete container;
    }
    void load(int parents, int children) override
    {
        QList<TaviTreeItem *> items;
        items.reserve(parents);
        for (int i = 0; i < parents; ++i) {
            items.append(make(i * (children + 1)));
            for (int j = 0; j < children; ++j)
                items.last()->appendChild(make(i * (children + 1) + j + 1));
        }
        model_.appendItems(items);
    }
    void appendOne(int row) override { model_.appendItem(make(row)); }
    void filter(const QString &keyword) override { line_edit_.setText(keyword); }
    void expandAll() override
    {
        view_.expandAll();
        view_.saveExpandStates();
    }
    void rememberClosed() { view_.saveExpandStates(); }
    int visibleTopRows() const override { return view_.visibleRowCount(); }
    QTreeView *view() override { return &view_; }
    TaviTreeView &taviView() { return view_; }
    TaviTreeModel &model() { return model_; }

private:
    static TaviTreeItem *make(int row)
    {
        QList<QVariant> values;
        for (const QString &text : textsOf(row))
            values.append(text);
        return new TaviTreeItem(values, nullptr);
    }

    TaviTreeModel model_{QList<QVariant>{"a", "b", "c", "d"}};
    QLineEdit line_edit_;
    TaviTreeView view_;
};

class ProxySubject : public Subject
{
public:
    ProxySubject()
    {
        proxy_.setRecursiveFilteringEnabled(true);
        proxy_.setFilterKeyColumn(-1);
        proxy_.setFilterCaseSensitivity(Qt::CaseInsensitive);
        model_.setColumnCount(4);
        proxy_.setSourceModel(&model_);
        view_.setModel(&proxy_);
    }
    void load(int parents, int children) override
    {
        QList<QList<QStandardItem *>> rows;
        for (int i = 0; i < parents; ++i) {
            rows.append(make(i * (children + 1)));
            for (int j = 0; j < children; ++j)
                rows.last().first()->appendRow(make(i * (children + 1) + j + 1));
        }
        proxy_.setSourceModel(nullptr);
        for (const QList<QStandardItem *> &row : rows)
            model_.appendRow(row);
        proxy_.setSourceModel(&model_);
    }
    void appendOne(int row) override { model_.appendRow(make(row)); }
    void filter(const QString &keyword) override { proxy_.setFilterFixedString(keyword); }
    void expandAll() override { view_.expandAll(); }
    int visibleTopRows() const override { return proxy_.rowCount(); }
    QTreeView *view() override { return &view_; }

private:
    static QList<QStandardItem *> make(int row)
    {
        QList<QStandardItem *> cells;
        for (const QString &text : textsOf(row))
            cells.append(new QStandardItem(text));
        return cells;
    }

    QStandardItemModel model_;
    QSortFilterProxyModel proxy_;
    QTreeView view_;
};

class WidgetSubject : public Subject
{
public:
    WidgetSubject() { view_.setColumnCount(4); }
    void load(int parents, int children) override
    {
        QList<QTreeWidgetItem *> items;
        for (int i = 0; i < parents; ++i) {
            items.append(new QTreeWidgetItem(textsOf(i * (children + 1))));
            for (int j = 0; j < children; ++j)
                items.last()->addChild(new QTreeWidgetItem(textsOf(i * (children + 1) + j + 1)));
        }
        view_.addTopLevelItems(items);
    }
    void appendOne(int row) override { view_.addTopLevelItem(new QTreeWidgetItem(textsOf(row))); }
    void filter(const QString &keyword) override
    {
        view_.setUpdatesEnabled(false);
        for (int i = 0; i < view_.topLevelItemCount(); ++i)
            filterItem(view_.topLevelItem(i), keyword);
        view_.setUpdatesEnabled(true);
    }
    void expandAll() override { view_.expandAll(); }
    int visibleTopRows() const override
    {
        int count = 0;
        for (int i = 0; i < view_.topLevelItemCount(); ++i)
            count += view_.topLevelItem(i)->isHidden() ? 0 : 1;
        return count;
    }
    QTreeView *view() override { return &view_; }

private:
    static bool filterItem(QTreeWidgetItem *item, const QString &keyword)
    {
        bool visible = false;
        for (int column = 0; column < 4 && !visible; ++column)
            visible = item->text(column).contains(keyword, Qt::CaseInsensitive);
        for (int child = 0; child < item->childCount(); ++child)
            visible = filterItem(item->child(child), keyword) || visible;
        if (item->isHidden() == visible)
            item->setHidden(!visible);
        return visible;
    }

    QTreeWidget view_;
};

enum class Shape { flat, deep_closed, deep_open };

/// Times @a step, after @a before, each time until the view is painted.
void measure(benchmark::State &state, Subject &subject, const std::function<void()> &before,
             const std::function<void()> &step)
{
    for (auto _ : state) {
        before();
        subject.paint();
        const auto start = std::chrono::steady_clock::now();
        step();
        subject.paint();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}

template <typename Kind>
void keystroke(benchmark::State &state, int rows, Shape shape, const QString &from, const QString &to)
{
    Kind subject;
    if (shape == Shape::flat)
        subject.load(rows, 0);
    else
        subject.load(deep_parents, deep_children);
    subject.show();
    if constexpr (std::is_same_v<Kind, TaviSubject>)
        subject.rememberClosed();
    if (shape == Shape::deep_open)
        subject.expandAll();
    const int all = subject.visibleRows();
    measure(
        state, subject,
        [&] {
            subject.filter(QString());
            if (shape == Shape::deep_open && std::is_same_v<Kind, ProxySubject>)
                subject.expandAll();
            if (!from.isEmpty()) {
                subject.paint();
                subject.filter(from);
            }
        },
        [&] { subject.filter(to); });
    if (to.isEmpty() ? subject.visibleRows() != all : subject.visibleRows() >= all)
        state.SkipWithError("wrong rows");
}

template <typename Kind>
void appendOneByOne(benchmark::State &state, int rows)
{
    for (auto _ : state) {
        Kind subject;
        subject.show();
        textsOf(rows);
        const auto start = std::chrono::steady_clock::now();
        for (int row = 0; row < rows; ++row)
            subject.appendOne(row);
        subject.paint();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (subject.visibleTopRows() != rows)
            state.SkipWithError("wrong rows");
    }
}

/// The same with a status line, which tells the number of rows after each of them.
void appendOneByOneWithStatus(benchmark::State &state, int rows)
{
    for (auto _ : state) {
        TaviSubject subject(true);
        subject.show();
        textsOf(rows);
        const auto start = std::chrono::steady_clock::now();
        for (int row = 0; row < rows; ++row)
            subject.appendOne(row);
        subject.paint();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}

/// Some items of a tree of the given size, each selected by itself, and in one list.
void selectItems(benchmark::State &state, int rows, bool in_one_list)
{
    TaviSubject subject;
    subject.load(rows, 0);
    TaviTreeView &view = subject.taviView();
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    subject.show();
    QList<TaviTreeItem *> items;
    for (int i = 0; i < 100; ++i)
        items.append(subject.model().itemAt(i * (rows / 100)));
    for (auto _ : state) {
        state.PauseTiming();
        view.clearSelection();
        state.ResumeTiming();
        if (in_one_list) {
            view.selectItems(items);
        } else {
            for (TaviTreeItem *item : items)
                view.selectItem(item);
        }
    }
    if (view.selectedItems(0).size() != 100)
        state.SkipWithError("wrong rows");
}

void restoreSelections(benchmark::State &state, int rows)
{
    TaviSubject subject;
    subject.load(rows, 0);
    TaviTreeView &view = subject.taviView();
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    subject.show();
    QList<QVariant> ids;
    for (int i = 0; i < 1000; ++i)
        ids.append(subject.model().itemAt(i * (rows / 1000))->id());
    for (auto _ : state)
        view.restoreSelections(0, TaviTreeItem::IdRole, ids);
    if (view.selectedItems(0).size() != 1000)
        state.SkipWithError("wrong rows");
}

/// A click: the selection moves on, and the status line tells so.
void selectionMoves(benchmark::State &state, int rows, bool filtered)
{
    TaviSubject subject(true);
    subject.load(rows, 0);
    TaviTreeView &view = subject.taviView();
    subject.show();
    if (filtered)
        subject.filter(first_key);
    subject.paint();
    int row = 0;
    for (auto _ : state) {
        row = (row + 7) % 700;
        view.selectionModel()->setCurrentIndex(view.model()->index(row, 0),
                                               QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
}

template <typename Kind>
void registerKeystrokes(const std::string &kind)
{
    struct Key {
        const char *name;
        QString from;
        QString to;
    };
    const Key keys[] = {
        {"first_key", {}, first_key}, {"refining_key", first_key, second_key}, {"clearing", first_key, {}}};
    const auto add = [&](const std::string &size, const Key &key, int rows, Shape shape) {
        const bool hopeless = shape != Shape::flat && std::is_same_v<Kind, ProxySubject>;
        auto *bench =
            benchmark::RegisterBenchmark((size + "/" + key.name + "/" + kind).c_str(), [=](benchmark::State &state) {
                keystroke<Kind>(state, rows, shape, key.from, key.to);
            });
        bench->Unit(benchmark::kMillisecond)->UseManualTime();
        if (hopeless)
            bench->Iterations(1); // close to a minute each
    };
    for (const int rows : {1000, 10000, 100000}) {
        for (const Key &key : keys)
            add("flat_" + std::to_string(rows), key, rows, Shape::flat);
    }
    for (const Key &key : keys) {
        add("deep_closed", key, 0, Shape::deep_closed);
        add("deep_open", key, 0, Shape::deep_open);
    }
    for (const int rows : {1000, 10000, 100000}) {
        auto *bench =
            benchmark::RegisterBenchmark(("flat_" + std::to_string(rows) + "/append_one_by_one/" + kind).c_str(),
                                         [=](benchmark::State &state) { appendOneByOne<Kind>(state, rows); });
        bench->Unit(benchmark::kMillisecond)->UseManualTime();
    }
}

void registerAll()
{
    registerKeystrokes<TaviSubject>("TaviTreeView");
    registerKeystrokes<ProxySubject>("QSortFilterProxyModel");
    registerKeystrokes<WidgetSubject>("QTreeWidget");
    for (const int rows : {1000, 10000, 100000}) {
        const std::string size = "flat_" + std::to_string(rows) + "/";
        const auto add = [&](const char *name, const std::function<void(benchmark::State &)> &run) {
            return benchmark::RegisterBenchmark((size + name).c_str(), run)->Unit(benchmark::kMicrosecond);
        };
        add("select_100_items_each/TaviTreeView", [=](benchmark::State &state) { selectItems(state, rows, false); });
        add("select_100_items_in_a_list/TaviTreeView",
            [=](benchmark::State &state) { selectItems(state, rows, true); });
        add("restore_1000_selections/TaviTreeView", [=](benchmark::State &state) { restoreSelections(state, rows); });
        add("selection_moves/TaviTreeView", [=](benchmark::State &state) { selectionMoves(state, rows, false); });
        add("selection_moves_filtered/TaviTreeView",
            [=](benchmark::State &state) { selectionMoves(state, rows, true); });
        add("append_one_by_one_with_status/TaviTreeView",
            [=](benchmark::State &state) { appendOneByOneWithStatus(state, rows); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
