// A lithium battery as its laptop meets it: it takes less the fuller it is, stores a little
// less than it takes, and stops charging at full until enough of the charge is used.
#pragma once

namespace amperly {

class SimulatedBattery {
public:
    static constexpr double kCapacityWattHours = 70.0;

    /// Part of the power that goes in which is there to be drawn again.
    static constexpr double kChargeEfficiency = 0.94;

    static constexpr double kMostChargingWatts = 65.0; ///< below kTaperPercent
    static constexpr double kLeastChargingWatts = 4.0; ///< just before full
    static constexpr double kTaperPercent = 80.0; ///< from here on the cells take less and less
    static constexpr double kMostDeliveredWatts = 120.0;

    /// A full battery is left alone until its charge has fallen to this.
    static constexpr double kTopUpPercent = 95.0;

    /// `percent` beyond 0 to 100 is taken as the nearer of the two.
    explicit SimulatedBattery(double percent) { setPercent(percent); }

    void setPercent(double percent);
    [[nodiscard]] double percent() const;

    [[nodiscard]] bool isEmpty() const { return m_wattHours <= 0; }
    [[nodiscard]] bool isFull() const { return m_wattHours >= kCapacityWattHours; }

    /// Under load a lithium cell's voltage tells its charge; three in a row make these volts.
    [[nodiscard]] double volts() const;

    /// The most that would go in now; 0 when full or not yet in need of a top-up.
    [[nodiscard]] double acceptedWatts() const;

    /// The most that would come out now; 0 when empty.
    [[nodiscard]] double deliverableWatts() const;

    /// Lets `watts` (positive into the battery) flow for `seconds`, or until full or empty.
    void flow(double watts, double seconds);

private:
    void updateToppedUp();

    double m_wattHours = 0;
    bool m_isToppedUp = false; ///< was full, has not fallen to kTopUpPercent since
};

} // namespace amperly
