#include "gas/typing.h"

#include "gas/gascalc.h"
#include "session/process.h"

#include <algorithm>
#include <utility>

namespace benthor::gas {

namespace {

bool sameRow(const GasRow& one, const GasRow& other) {
    return cellnumber(one.O2) == cellnumber(other.O2) && cellnumber(one.He) == cellnumber(other.He) &&
           cellnumber(one.MOD) == cellnumber(other.MOD) && one.active == other.active;
}

Settings valuesOf(Settings settings) {
    for (QString* text : {&settings.sptext, &settings.ScreenSaveText, &settings.HomeText}) {
        *text = cellnumber(*text) ? generaltext(*cellnumber(*text)) : *text;
    }
    settings.divegas = 0; // only follows
    return settings;
}

bool sameAs(const TypedPlan& typed, const GasPlan& plan) {
    return std::equal(typed.rows.begin(), typed.rows.end(), plan.rows.begin(), sameRow) &&
           typed.start == plan.start && typed.depthperbar == plan.depthperbar &&
           valuesOf(typed.settings) == valuesOf(plan.settings);
}

} // namespace

QString typednumber(const QString& text) {
    return QString(text).replace(u',', u'.');
}

void typecell(GasPlan& plan, Cell cell, int row, const QString& text, const Say& say) {
    const QString number = typednumber(text);
    plan.typed = true;
    switch (cell) {
    case Cell::O2:
        setO2(plan, row, number, say);
        break;
    case Cell::He:
        setHe(plan, row, number, say);
        break;
    case Cell::MOD:
        setMOD(plan, row, number);
        plan.rows[static_cast<size_t>(row)].MODtyped = true;
        break;
    case Cell::PPO2:
        setPPO2(plan, row, number);
        break;
    case Cell::Maximum:
        setmaxppo2(plan, number, say);
        break;
    case Cell::SetPoint:
        plan.settings.sptext = number;
        break;
    case Cell::ScreenSaver:
        plan.settings.ScreenSaveText = number;
        break;
    case Cell::Home:
        plan.settings.HomeText = number;
        break;
    }
}

void typesettings(GasPlan& plan, const Settings& settings) {
    plan.typed = true;
    plan.settings = settings;
    for (QString* text : {&plan.settings.sptext, &plan.settings.ScreenSaveText, &plan.settings.HomeText}) {
        *text = typednumber(*text);
    }
}

void clickactive(GasPlan& plan, int row, bool active, const Say& say) {
    GasRow& gas = plan.rows[static_cast<size_t>(row)];
    plan.typed = true;
    gas.active = active;
    gas.changed = true;
    activeclicked(plan, row, say);
}

void clickstart(GasPlan& plan, int row) {
    plan.typed = true;
    startclicked(plan, row);
}

void clickstepper(GasPlan& plan, int index, bool up, const Say& say) {
    plan.typed = true;
    stepperclicked(plan, index, up, say);
}

void moveslider(GasPlan& plan, int index, int value, const Say& say) {
    plan.typed = true;
    sliderscrolled(plan, index, value, say);
}

Replacing::Replacing(GasPlan& plan, const QString& by)
    : plan_(plan) {
    if (plan.typed) {
        before_ = TypedPlan{plan.rows,    plan.start,       plan.settings, plan.Text5,
                            plan.maxppo2, plan.depthperbar, plan.headfeet, by};
    }
}

Replacing::~Replacing() {
    if (before_ && !sameAs(*before_, plan_)) {
        plan_.replaced = std::move(before_);
        plan_.typed = false;
    }
}

void bringback(GasPlan& plan) {
    if (!plan.replaced) {
        return;
    }
    const TypedPlan typed = *std::exchange(plan.replaced, std::nullopt);
    for (size_t i = 0; i < plan.rows.size(); ++i) {
        GasRow row = typed.rows[i];
        // What a device lets be chosen is its own.
        row.name = plan.rows[i].name;
        row.activeEnabled = plan.rows[i].activeEnabled;
        row.startEnabled = plan.rows[i].startEnabled;
        plan.rows[i] = row;
    }
    plan.start = typed.start;
    plan.settings = typed.settings;
    plan.Text5 = typed.Text5;
    plan.maxppo2 = typed.maxppo2;
    plan.depthperbar = typed.depthperbar;
    plan.headfeet = typed.headfeet;
    process().depthunit = plan.feet() ? QStringLiteral("Feet") : QStringLiteral("metre");
    plan.unitshown = process().depthunit;
    plan.typed = true;
    showgasrow(plan, plan.start);
}

} // namespace benthor::gas
