// A test that does without the superuser's rights.
#pragma once

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace amperly {

/// Permissions bind everybody but the superuser: a test about them hands its folder to an
/// ordinary user and goes on as that one. Without effect where it is one already.
class AsOrdinaryUser {
public:
    explicit AsOrdinaryUser(const TemporaryFolder& folder)
    {
        if (geteuid() != 0)
            return;
        m_isSuperuser = true;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
            handOver(entry.path());
        handOver(folder.path());
        EXPECT_EQ(seteuid(kNobody), 0);
    }
    ~AsOrdinaryUser()
    {
        if (m_isSuperuser) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;

    static void handOver(const std::filesystem::path& path)
    {
        EXPECT_EQ(lchown(path.c_str(), kNobody, static_cast<gid_t>(-1)), 0);
    }

    bool m_isSuperuser = false;
};

} // namespace amperly
