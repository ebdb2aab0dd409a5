// The pulses on their way along a tube, one after the other at even distances.
#pragma once

namespace amperly::glass {

/// The pulses of one moment. Positions are points along the tube, from 0 at its start.
class PulseTrain {
public:
    /// `travelled` points have gone by since the beginning; `length` is the tube's. The first pulse
    /// is one whole spacing before the start at most, the last one a spacing behind the end, so that
    /// they appear and disappear out of sight.
    PulseTrain(double travelled, double length);

    [[nodiscard]] double firstCentre() const { return m_first; }
    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] double centre(int index) const;

    /// How much the tube swells at `position`, from 0 to 1: nothing at both of its ends, whatever
    /// pulse is there.
    [[nodiscard]] double swell(double position) const;

private:
    double m_first = 0.0;
    double m_length = 0.0;
    int m_count = 0;
};

/// How much of a pulse shows so near to an end of a tube, from 0 at the end to 1 inside.
[[nodiscard]] double endTaper(double position, double length);

} // namespace amperly::glass
