#include "platform/linux/memory/memory_trimming.h"

#include "platform/linux/memory/visible_windows.h"

#include <QEvent>
#include <QGuiApplication>

#include <array>
#include <cstdint>
#include <cstdio>
#include <malloc.h>
#include <memory>
#include <sys/mman.h>
#include <utility>

namespace amperly {

namespace {

/// One stretch of address space as /proc/self/smaps describes it.
struct Mapping {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
    bool writable = false;
    bool isFile = false;

    [[nodiscard]] std::size_t size() const { return end - begin; }
};

/// A line that opens a mapping: "7f12-7f34 r--p 00000000 fd:00 123   /usr/lib/…".
bool parseHeader(const char* line, Mapping& mapping)
{
    unsigned long begin = 0;
    unsigned long end = 0;
    std::array<char, 5> permissions{};
    int pathAt = 0;
    // NOLINTNEXTLINE(cert-err34-c): the kernel writes these numbers, and a line that is not a header fails at
    // the dash.
    if (std::sscanf(line, "%lx-%lx %4s %*s %*s %*s %n", &begin, &end, permissions.data(), &pathAt) != 3)
        return false;
    mapping = {begin, end, permissions[1] == 'w', pathAt > 0 && line[pathAt] == '/'};
    return true;
}

} // namespace

std::size_t trimMemory()
{
    malloc_trim(0);

    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> smaps(
        std::fopen("/proc/self/smaps", "re"), &std::fclose);
    if (!smaps)
        return 0;

    std::size_t returned = 0;
    Mapping mapping;
    std::array<char, 1024> line{};
    while (std::fgets(line.data(), static_cast<int>(line.size()), smaps.get()) != nullptr) {
        if (parseHeader(line.data(), mapping))
            continue;
        // Anonymous pages in a file's mapping were written to, by relocation for instance: they
        // differ from the file, even where the mapping is read-only by now, and must stay.
        unsigned long anonymousKilobytes = 0;
        // NOLINTNEXTLINE(cert-err34-c): as above.
        if (std::sscanf(line.data(), "Anonymous: %lu kB", &anonymousKilobytes) != 1)
            continue;
        if (mapping.isFile && !mapping.writable && anonymousKilobytes == 0) {
            // NOLINTNEXTLINE(performance-no-int-to-ptr): the address was read from the kernel as a number.
            if (madvise(reinterpret_cast<void*>(mapping.begin), mapping.size(), MADV_DONTNEED) == 0)
                returned += mapping.size();
        }
    }
    return returned;
}

void keepLargeBlocksApart()
{
    constexpr int kLargeBytes = 128 * 1024; // where the C library begins; said, it stays there
    mallopt(M_MMAP_THRESHOLD, kLargeBytes);
}

MemoryTrimming::MemoryTrimming(std::function<void()> trim)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(kSettlingMilliseconds);
    connect(&m_settling, &QTimer::timeout, this, [trim = std::move(trim)] {
        if (!anyWindowVisible())
            trim();
    });
    m_settling.start();
    qApp->installEventFilter(this);
}

bool MemoryTrimming::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide && watched->isWindowType())
        m_settling.start();
    return false;
}

} // namespace amperly
