// SPDX-License-Identifier: MIT
#ifndef QT3_Q3HEADER_H
#define QT3_Q3HEADER_H

#include "qt3/taviqt3_export.h"

#include <QIcon>
#include <QString>
#include <QStyleOptionHeader>
#include <QWidget>

#include <memory>
#include <vector>

/// A row or column of headings, which the user may click, resize and drag to other places.
///
/// A **section** is a heading; its number is what addLabel() returned, and stays when it is moved. The **index** of a
/// section is the place at which it is shown. Without moves both are the same. Removing a section lowers the numbers
/// of those behind it by one.
///
/// Sizes are pixels along the header. A section of size 0 is hidden. Where the layout runs from right to left, index
/// 0 is at the right; positions along the header count from there.
///
/// **Cost.** Finding a section by its position is O(count); all else is constant or O(count).
///
/// Sections may be added and removed, and the header deleted, in any slot of its signals.
class TAVIQT3_EXPORT Q3Header : public QWidget
{
    Q_OBJECT
    /// The number of sections.
    Q_PROPERTY(int count READ count)
    /// Whether sizeChange() is emitted while the mouse still resizes.
    Q_PROPERTY(bool tracking READ tracking WRITE setTracking)
    /// Which way the sections follow each other.
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    /// The first pixel that is shown.
    Q_PROPERTY(int offset READ offset WRITE setOffset)
    /// Whether the user may move sections.
    Q_PROPERTY(bool moving READ isMovingEnabled WRITE setMovingEnabled)
    /// Whether the sections always take up the whole header.
    Q_PROPERTY(bool stretching READ isStretchEnabled WRITE setStretchEnabled)

public:
    /// A horizontal header without sections.
    explicit Q3Header(QWidget *parent = nullptr, const char *name = nullptr);
    /// A horizontal header with @a n sections without text.
    explicit Q3Header(int n, QWidget *parent = nullptr, const char *name = nullptr);
    ~Q3Header() override;

    /// @name Sections
    /// @{

    /// Adds a section behind all others, of a size that fits the text if @a size is negative. Returns its number.
    int addLabel(const QString &s, int size = -1);
    /// The same with an icon before the text.
    int addLabel(const QIcon &icon, const QString &s, int size = -1);
    /// Removes a section; nothing if there is none of that number.
    void removeLabel(int section);
    /// Changes the text, and the size unless that is negative; the icon stays. Nothing without such a section.
    virtual void setLabel(int section, const QString &s, int size = -1);
    /// Changes icon and text, and the size unless that is negative. Nothing without such a section.
    virtual void setLabel(int section, const QIcon &icon, const QString &s, int size = -1);
    /// The text; empty without such a section.
    QString label(int section) const;
    /// The icon, owned by the header until it is set anew or the section goes; null without a section or an icon.
    QIcon *iconSet(int section) const;
    /// The number of sections.
    int count() const { return static_cast<int>(sections_.size()); }
    /// @}

    /// @name Places
    /// @{

    /// The index at which a section is shown; -1 without such a section.
    int mapToIndex(int section) const;
    /// The section shown at an index; -1 if there is none.
    int mapToSection(int index) const;
    /// The same as mapToIndex().
    int mapToActual(int l) const { return mapToIndex(l); }
    /// The same as mapToSection().
    int mapToLogical(int a) const { return mapToSection(a); }
    /// Moves a section so that it is shown at index @a toIndex, which is held within the range. No signal.
    void moveSection(int section, int toIndex);
    /// Moves the section at one index to another. No signal.
    virtual void moveCell(int fromIdx, int toIdx);
    /// @}

    /// @name Sizes and positions
    /// @{

    /// The size of a section; 0 without such a section.
    int sectionSize(int section) const;
    /// The position at which a section begins, from the header's beginning, wherever it is scrolled to; 0 without
    /// such a section.
    int sectionPos(int section) const;
    /// The section at a position as sectionPos() counts; -1 if there is none.
    int sectionAt(int pos) const;
    /// The rectangle of a section in the widget's coordinates; empty without such a section.
    QRect sectionRect(int section) const;
    /// The size of the section at an index.
    int cellSize(int i) const { return sectionSize(mapToSection(i)); }
    /// The position of the section at an index.
    int cellPos(int i) const { return sectionPos(mapToSection(i)); }
    /// The index of the section at a position in the widget's coordinates; -1 if there is none.
    int cellAt(int pos) const;
    /// Gives a section the size @a s, at least 0, and repaints. No signal.
    void resizeSection(int section, int s);
    /// Gives a section a size without repainting.
    virtual void setCellSize(int section, int s);
    /// The sizes of all sections together.
    int headerWidth() const;
    /// Shares the header's width among the sections that stretch, in equal parts; the others keep theirs.
    void adjustHeaderSize();
    /// The first pixel that is shown.
    int offset() const { return offset_; }
    /// @}

    /// @name What the user may do
    /// @{

    /// Whether clicks on a section are told of; for a section out of range, whether those on all are.
    bool isClickEnabled(int section = -1) const;
    /// Sets it for a section or, with -1, for all there are and all to come. True at first.
    virtual void setClickEnabled(bool enable, int section = -1);
    /// Whether the user may resize a section; for a section out of range, whether all.
    bool isResizeEnabled(int section = -1) const;
    /// Sets it for a section or, if that is negative, for all there are and all to come. True at first.
    virtual void setResizeEnabled(bool enable, int section = -1);
    /// Whether the user may move sections. True at first.
    bool isMovingEnabled() const { return moving_enabled_; }
    /// Sets whether the user may move sections.
    virtual void setMovingEnabled(bool enable);
    /// Whether all sections, of which there is at least one, stretch.
    bool isStretchEnabled() const { return isStretchEnabled(-1); }
    /// Whether a section stretches; for -1, all.
    bool isStretchEnabled(int section) const;
    /// Sets whether a section, or with -1 every one, is resized when the header is, so that all fill it.
    virtual void setStretchEnabled(bool b, int section);
    /// Sets it for all sections.
    void setStretchEnabled(bool b) { setStretchEnabled(b, -1); }
    /// Whether sizeChange() is emitted while the mouse still resizes. False at first.
    bool tracking() const { return tracking_; }
    /// Sets when sizeChange() is emitted.
    virtual void setTracking(bool enable);
    /// @}

    /// Which way the sections follow each other. Horizontal at first.
    Qt::Orientation orientation() const { return orientation_; }
    /// Set it before sections are added whose size is left to the header.
    virtual void setOrientation(Qt::Orientation orientation);
    /// Shows the arrow of a sorted section in one section, or in none with -1.
    void setSortIndicator(int section, Qt::SortOrder order);
    /// The same with a flag.
    void setSortIndicator(int section, bool ascending = true);
    /// The section with the arrow, or -1.
    int sortIndicatorSection() const { return sort_section_; }
    /// The order that the arrow shows.
    Qt::SortOrder sortIndicatorOrder() const { return sort_order_; }
    /// As wide as all sections, and as high as the style wants the highest.
    QSize sizeHint() const override;

public Q_SLOTS:
    /// Scrolls so that @a pos is the first pixel shown.
    virtual void setOffset(int pos);

Q_SIGNALS:
    /// A section was clicked that may be.
    void clicked(int section);
    /// The same, with the index at which it is shown.
    void sectionClicked(int index);
    /// A section was pressed.
    void pressed(int section);
    /// The section that was pressed is released, wherever the mouse is.
    void released(int section);
    /// The user has resized a section.
    void sizeChange(int section, int oldSize, int newSize);
    /// The user has moved a section from index @a fromIndex into the gap before @a toIndex, both as they were before
    /// the move: a section dragged behind the last one has @a toIndex count().
    void indexChange(int section, int fromIndex, int toIndex);
    /// The same without the section.
    void moved(int fromIndex, int toIndex);
    /// The edge at the end of a section was double-clicked.
    void sectionHandleDoubleClicked(int section);

protected:
    /// Paints the section at an index in @a fr, by the style, and calls paintSectionLabel().
    virtual void paintSection(QPainter *p, int index, const QRect &fr);
    /// Paints icon, text and arrow of the section at an index in @a fr.
    virtual void paintSectionLabel(QPainter *p, int index, const QRect &fr);
    /// The rectangle of the section at an index, in the widget's coordinates.
    QRect sRect(int index);
    /// Fonts and styles change what fits.
    void changeEvent(QEvent *ev) override;
    /// Left and Right choose a section, with Ctrl they move it; Space presses it.
    void keyPressEvent(QKeyEvent *e) override;
    /// Space let go clicks the section.
    void keyReleaseEvent(QKeyEvent *e) override;
    /// On an edge, sectionHandleDoubleClicked(); elsewhere a press.
    void mouseDoubleClickEvent(QMouseEvent *e) override;
    /// Resizes, moves, or shows where the mouse would.
    void mouseMoveEvent(QMouseEvent *e) override;
    /// Begins what the left button does.
    void mousePressEvent(QMouseEvent *e) override;
    /// Ends it.
    void mouseReleaseEvent(QMouseEvent *e) override;
    /// The mouse is over no section any more.
    void leaveEvent(QEvent *e) override;
    /// Tells the whole text of a section that is too narrow for it.
    bool event(QEvent *e) override;
    /// Paints the sections in sight.
    void paintEvent(QPaintEvent *e) override;
    /// Stretches what stretches.
    void resizeEvent(QResizeEvent *e) override;
    /// Stretches what stretches.
    void showEvent(QShowEvent *e) override;

private:
    friend struct Q3ListViewPrivate;
    struct Section {
        QString label;
        std::unique_ptr<QIcon> icon;
        int size = 0;
        bool clickable = true;
        bool resizable = true;
        bool stretches = false;
    };
    enum class Mouse { Idle, Pressed, Resizing, Moving };

    bool has(int section) const { return section >= 0 && section < count(); }
    int insert(std::unique_ptr<QIcon> icon, const QString &text, int size);
    int fittingSize(int section) const;
    QStyleOptionHeader styleOption(int index) const;
    int along(const QPoint &point) const;
    int extent() const;
    int handleAt(int pos) const;
    int gapAt(int pos) const;
    void resizeByMouse(int pos);
    void finishMoving();
    void moveByUser(int section, int gap);
    void emitClick(int section);
    void setHovered(int index);

    std::vector<Section> sections_;
    std::vector<int> order_; ///< The sections as they are shown.
    Qt::Orientation orientation_ = Qt::Horizontal;
    Qt::SortOrder sort_order_ = Qt::AscendingOrder;
    int sort_section_ = -1;
    int offset_ = 0;
    bool tracking_ = false;
    bool moving_enabled_ = true;
    bool click_default_ = true;
    bool resize_default_ = true;
    bool stretch_default_ = false;

    Mouse mouse_ = Mouse::Idle;
    int pressed_section_ = -1;
    int press_pos_ = 0;
    int press_size_ = 0;
    int gap_ = -1; ///< Where a moved section would go.
    int hovered_ = -1;
    int focused_ = 0;
};

#endif
