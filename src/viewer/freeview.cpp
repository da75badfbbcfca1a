#include "viewer/freeview.h"

#include "platform/textformat.h"
#include "profile/elapsed.h"

#include <algorithm>
#include <cmath>

namespace benthor::viewer {

namespace {

/// The same span, moved to where the dive is.
RowRange within(RowRange view, int lastsample) {
    const double last = lastsample;
    const double span = std::min(view.span(), last);
    const double first = std::clamp(view.first, 0.0, last - span);
    return {first, first + span};
}

} // namespace

RowRange zoomedAbout(RowRange view, double row, double factor, int lastsample) {
    const double most = lastsample;
    const double span = std::clamp(view.span() / factor, std::min(kLeastSpan, most), most);
    const double share = view.span() > 0 ? (row - view.first) / view.span() : 0.5;
    const double first = row - share * span;
    return within({first, first + span}, lastsample);
}

RowRange movedBy(RowRange view, double rows, int lastsample) {
    return within({view.first + rows, view.last + rows}, lastsample);
}

RowRange followed(RowRange view, int row, int lastsample) {
    if (row >= view.first && row <= view.last) {
        return view;
    }
    return movedBy(view, row - view.first - view.span() / 4, lastsample);
}

bool isWholeDive(RowRange view, int lastsample) {
    return view.first <= 0 && view.last >= lastsample;
}

int freeClickRow(double share, RowRange view, int lastsample) {
    int row = platform::toWhole(platform::wholePart(view.first + share * view.span())) + 1;
    row = std::max(std::min(row, lastsample - 1), 1);
    return row > 1 ? row - 1 : row;
}

int freeStripRow(double share, RowRange view, int lastsample) {
    return std::clamp(platform::toWhole(view.first + share * view.span()), 1, std::max(1, lastsample));
}

std::array<QString, 5> freeTimeLabels(double interval, RowRange view) {
    std::array<QString, 5> labels;
    for (std::size_t quarter = 0; quarter < labels.size(); ++quarter) {
        labels[quarter] = profile::formatelapsedWhole(
            interval * (view.first + view.span() * static_cast<double>(quarter) / 4.0));
    }
    return labels;
}

Strip freeStrip(const profile::DiveProfile& profile, int lastsample, int currentrow, RowRange view) {
    Strip strip = drawstrip(profile, lastsample, currentrow, ZoomState());
    std::erase_if(strip.lines, [view](const StripLine& line) {
        return line.sample < view.first || line.sample > view.last;
    });
    for (StripLine& line : strip.lines) {
        line.place = (line.sample - view.first) / view.span();
    }
    return strip;
}

GasStrip freeGasStrip(const GasRowNames& names, int lastsample, RowRange view) {
    GasStrip strip;
    const int first = std::max(1, static_cast<int>(std::floor(view.first)));
    const int last = std::min(lastsample, static_cast<int>(std::ceil(view.last)));
    for (int row = first; row <= last; ++row) {
        const QString name =
            static_cast<std::size_t>(row) < names.size() ? names[static_cast<std::size_t>(row)] : QString();
        if (!strip.runs.empty() && strip.runs.back().name == name) {
            strip.runs.back().lastRow = row;
        } else {
            strip.text += (strip.text.isEmpty() ? QString() : QStringLiteral(" ")) + name;
            strip.runs.push_back({name, row, row});
        }
    }
    return strip;
}

} // namespace benthor::viewer
