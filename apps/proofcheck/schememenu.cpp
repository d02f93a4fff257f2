// SPDX-License-Identifier: MIT
#include "proofcheck/schememenu.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QPalette>

namespace {

constexpr const char *settings_section = "proofcheck scheme";
constexpr const char *id_key = "id";

} // namespace

SchemeMenu::SchemeMenu(TaviRegistry &registry, QWidget &window)
    : QMenu(tr("&Scheme"), &window), registry_(registry), window_(window)
{
    setObjectName(QStringLiteral("scheme_menu"));
    const QColor plain = QApplication::palette().color(QPalette::Window);
    schemes_.add(new ColorScheme(tr("Default"), ColorScheme::DEFAULT_NAME(), plain));
    schemes_.add(new ColorScheme(tr("Blue"), "blue", 210.0, 100.0, 90.0));
    schemes_.add(new ColorScheme(tr("Green"), "green", 100.0, 75.0, 75.0));
    schemes_.add(new ColorScheme(tr("Amber"), "amber", 40.0, 100.0, 95.0));
    addEntries();
}

void SchemeMenu::addEntries()
{
    std::string kept = registry_.getstring(settings_section, id_key);
    const ColorScheme *chosen = schemes_.find(kept);
    if (!chosen)
        chosen = schemes_.find(ColorScheme::DEFAULT_NAME());

    auto *group = new QActionGroup(this);
    for (const ColorScheme *scheme : schemes_) {
        QAction *action = addAction(scheme->iconSet(false), QLatin1Char('&') + scheme->displayName());
        action->setObjectName(QLatin1String("scheme_") + QLatin1String(scheme->idName()));
        action->setCheckable(true);
        action->setChecked(scheme == chosen);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, scheme] {
            registry_.putstring(settings_section, id_key, scheme->idName());
            choose(*scheme);
        });
    }
    choose(*chosen);
}

void SchemeMenu::choose(const ColorScheme &scheme)
{
    // What is not set follows the desktop, also when that changes.
    window_.setPalette({});
    if (!scheme.isDefault())
        scheme.apply(&window_, ColorScheme::HALF_COLOUR); // a full colour would be too strong behind text
}
