// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_COLORSCHEME_H
#define FOUNDATION_COLORSCHEME_H

#include "foundation/taviwidgets_export.h"
#include "qt3/q3ptrlist.h"

#include <QColor>
#include <QIcon>
#include <QString>

#include <string>

class QObject;
class QPixmap;
class QWidget;

/// A named tint for a window, by which the user tells at a glance which environment or job it belongs to.
///
/// An application makes its schemes, keeps them in a ColorSchemeHolder, offers them with their icons and applies the
/// one that is chosen to its main window:
///
/// @code
/// ColorSchemeHolder schemes;
/// schemes.add(new ColorScheme(tr("Flexo"), "flexo", 0, 160, 255, QColor::Rgb));
/// menu->addAction(schemes.find("flexo")->iconSet(true), schemes.find("flexo")->displayName());
/// schemes.find("flexo")->apply(window, ColorScheme::HALF_COLOUR);
/// @endcode
///
/// From its one **base colour** a scheme derives a light colour, a paler half colour, and three icons of 16 by 16
/// pixels: the full colour, the half colour, and a raster of fine pale stripes. Half colour and raster are computed
/// in YIQ on linear light: the hue of the base is kept, the luminance is a fixed one, and a colour that would lie
/// outside of RGB loses chroma until it fits, so that all tints are about equally bright and dark text reads well on
/// them.
///
/// **Ownership.** The id name is not copied: it must outlive the scheme, and is a literal as a rule. A scheme that is
/// added to a holder belongs to that. The class has no virtual functions; it is not made to be derived from.
///
/// **State.** A scheme does not change once it is made, but for icons and luminance, which are computed when they are
/// first asked for.
///
/// **Threads.** The user interface thread alone, and only while there is a QGuiApplication where icons are concerned.
class TAVIWIDGETS_EXPORT ColorScheme
{
public:
    /// How a scheme fills an area. Any other value counts as FULL_COLOUR.
    enum IconSetType : int {
        FULL_COLOUR = 0, ///< The base colour.
        HALF_COLOUR = 1, ///< The half colour. The icon is the base colour in its upper left half, white otherwise.
        RASTER = 2,      ///< Horizontal stripes.
    };

    /// @name Matrices
    /// Each turns a column of linear red, green and blue into a luminance and two chroma components. The class itself
    /// works with RGBtoYIQ. Its rows add up to 0.9999, 0 and -0.0001: white is not quite at luminance 1.
    /// @{
    static constexpr double RGBtoYIQ[3][3] = {
        {0.2989, 0.5866, 0.1144}, {0.5959, -0.2741, -0.3218}, {0.2113, -0.5227, 0.3113}};
    static constexpr double RGBtoYUV[3][3] = {
        {0.2989, 0.5866, 0.1144}, {-0.1473, -0.2891, -0.4364}, {0.6149, -0.5145, -0.1004}};
    static constexpr double RGBtoHDTV[3][3] = {
        {0.2122, 0.7013, 0.0865}, {-0.1162, -0.3838, 0.5}, {0.5, -0.4451, -0.0549}};
    /// @}

    /// A scheme of three whole numbers: red, green and blue from 0 to 255 if @a spec is QColor::Rgb; hue in degrees,
    /// which go round at 360, or -1 for none, saturation and value from 0 to 255 if it is QColor::Hsv. With any other
    /// spec the base colour is invalid, and the scheme counts as a grey; numbers out of range make it invalid too,
    /// and QColor warns of them. The id name @a id may be null; see above for how long it must live.
    ColorScheme(QString name, const char *id, int a, int b, int c, QColor::Spec spec);
    /// A scheme of a hue in degrees, a saturation and a value in percent. A negative hue is none: a grey. Degrees
    /// from 0 to 360 are scaled to 0 to 359, so that 360 is hue 359 and not red again; what lies above is 359. The
    /// others are clipped to 0 and 100. What is not a number counts as a negative hue and as 0 percent.
    ColorScheme(QString name, const char *id, double hue, double saturation, double value);
    /// A scheme of @a colour as it is, also if that is invalid or transparent.
    ColorScheme(QString name, const char *id, const QColor &colour);
    ~ColorScheme();
    ColorScheme(const ColorScheme &) = delete;
    ColorScheme &operator=(const ColorScheme &) = delete;

    /// The id name of the scheme in which windows look as they do without any: "default".
    static const char *DEFAULT_NAME();

    /// What the user sees.
    const QString &displayName() const { return display_name_; }
    /// The key by which a holder finds it: the very pointer that was given.
    const char *idName() const { return id_name_; }
    /// Whether the id name is DEFAULT_NAME().
    bool isDefault() const { return is_default_; }
    /// The colour that it was made from.
    const QColor &baseColour() const { return base_colour_; }
    /// The hue of the base colour at saturation 20 and value 255.
    const QColor &lightColour() const { return light_colour_; }
    /// Qt::white, the ground of the half icon.
    const QColor &white() const { return white_; }
    /// The half colour: of a grey, the grey of value 220; of any other, half its chroma at luminance 0.85.
    const QColor &halfColour() const { return half_colour_; }

    /// The half icon if @a half, else the full icon. The first call makes all three icons.
    QIcon iconSet(bool half) const;
    /// The icon of type @a type. The first call makes all three icons.
    QIcon iconSet(IconSetType type) const;
    /// Makes the raster icon: stripes with the luminance of the greys 255, 239, 231 and 239, taken for linear light,
    /// and the chroma of the base, fitted; of a grey base, white and light greys. Does nothing if there is a raster
    /// icon already.
    void generateRasterYIQ() const;
    /// Makes the raster icon in another way: from hue and saturation of the base at the HSV values 255, 239, 231 and
    /// 239. Does nothing if there is a raster icon already; where this form is wanted, it is called before any icon
    /// is asked for.
    void generateRasterHSV() const;

    /// The fitting step by itself: multiplies @a matrix, which leads from YIQ to linear RGB, by @a yiq into @a rgb;
    /// while one of these exceeds 1.0, scales I and Q in @a yiq by 0.9 and does so again, at most 101 times. Then
    /// every component of @a rgb becomes 255 times its absolute value to the power of 1 / @a gamma, at most 255.0 and
    /// not rounded.
    void adjustIQ(double (&yiq)[3], double (&rgb)[3], const double (&matrix)[3][3], double gamma) const;

    /// The luminance of the base colour on linear light, from 0 to 255. An application that puts text on the full
    /// colour may choose black or white by it.
    int themeYValue() const;

    /// Paints the background of @a widget, by way of its palette, which its children inherit: with type RASTER
    /// stripes tile over the widget's own background role; else the role QPalette::Window gets a plain colour. All
    /// colour groups are set. Does nothing for null.
    ///
    /// A child shows it where it lets its parent's background through; one with a background role of its own stays.
    void apply(QWidget *widget, IconSetType type) const;
    /// Paints one widget: with @a pixmap, its background role is filled with that; without, QPalette::Window is
    /// filled with @a colour. All colour groups are set; children are reached by the inheritance of palettes alone.
    /// Does nothing for null and for an object that is no widget.
    void applyDeeply(QObject *object, QPixmap *pixmap, const QColor &colour) const;

    /// Forgets the luminance and derives the default flag, light colour, white and half colour anew. The constructors
    /// do so themselves.
    void init();
    /// Derives the half colour from the base colour.
    void initHalf();

private:
    void generateHalfIcon() const;
    void generateFullIcon() const;

    QString display_name_;
    const char *id_name_;
    QColor base_colour_;
    QColor light_colour_;
    QColor white_;
    QColor half_colour_;
    mutable QIcon half_icon_;
    mutable QIcon full_icon_;
    mutable QIcon raster_icon_;
    bool is_default_ = false;
    mutable int theme_y_value_ = -1; ///< -1: not yet computed.
};

/// The schemes of an application, in the order in which they were added. It owns them and deletes them with itself.
///
/// The name find() stands for finding a scheme by what it is called; to find one by its address there is
/// Q3PtrList::findRef().
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT ColorSchemeHolder : public Q3PtrList<const ColorScheme>
{
public:
    /// An empty holder, with automatic deletion on.
    ColorSchemeHolder();
    ~ColorSchemeHolder() override;
    ColorSchemeHolder(const ColorSchemeHolder &) = delete;
    ColorSchemeHolder &operator=(const ColorSchemeHolder &) = delete;

    /// Appends @a scheme, which then belongs to the holder. Null is ignored. A scheme whose id name is there already
    /// is added all the same, and shadowed: find() finds the earlier one.
    void add(ColorScheme *scheme);

    /// @name Finding
    /// Null if there is none. The current item of the list is left alone. O(count()).
    /// @{

    /// The first scheme whose id name equals @a id.
    const ColorScheme *find(std::string &id) const;
    /// The same; of a null text, null.
    const ColorScheme *find(const char *id) const;
    /// The scheme at @a index, which counts from 0.
    const ColorScheme *find(int index) const;
    /// @}
};

#endif
