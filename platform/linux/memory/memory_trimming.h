// Gives memory back that start-up or a closed window has left behind. A program that is read
// from a library once and then sleeps all day need not keep those pages.
//
// Two things are given back: free heap, and pages of mapped files that nothing has written to.
// The second kind stays in the kernel's page cache and is mapped in again when it is touched.
#pragma once

#include <QObject>
#include <QTimer>

#include <cstddef>
#include <functional>

namespace amperly {

/// Gives back what can be given back and returns the size of the file mappings let go, in
/// bytes. Takes a millisecond or two; meant for when the program has nothing to do, not for every tick.
std::size_t trimMemory();

/// From now on what is large, a window's picture say, is mapped by itself and goes back to the
/// system when it is freed. Call it first of all. Left alone, the C library moves such blocks
/// into the heap after the first was freed, and there small ones keep the room between them.
void keepLargeBlocksApart();

/// Trims memory whenever the program has nothing more to do: once after its start, and each time its last
/// window has gone.
class MemoryTrimming : public QObject {
public:
    /// So long after the start, or after a window has gone. Long enough for the panel to have fetched the
    /// item, and for a window's last animation.
    static constexpr int kSettlingMilliseconds = 1500;

    /// Needs the application object. `trim` is what is done.
    explicit MemoryTrimming(std::function<void()> trim = [] { trimMemory(); });

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTimer m_settling;
};

} // namespace amperly
