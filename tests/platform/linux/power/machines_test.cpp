// Real machines' power supplies, each with what can honestly be said of it. They are kept outside
// of the repository: beside it, or where AMPERLY_MACHINES points.

#include "platform/linux/power/linux_power_source.h"
#include "platform/linux/power/posix_files.h"
#include "tests/platform/linux/power/known_flows.h"
#include "tests/platform/linux/power/sysfs_folder.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <gtest/gtest.h>

namespace amperly {
namespace {

enum class Uevent { Told, Empty };

QDir machinesFolder()
{
    const QString named = qEnvironmentVariable("AMPERLY_MACHINES");
    return QDir(named.isEmpty() ? QStringLiteral(AMPERLY_MACHINES_FOLDER) : named);
}

AttributeList attributesOf(const QJsonObject& object)
{
    AttributeList attributes;
    for (auto entry = object.begin(); entry != object.end(); ++entry)
        attributes.emplace_back(entry.key().toStdString(), entry.value().toString().toStdString());
    return attributes;
}

void build(SysfsFolder& folder, const QJsonObject& machine, Uevent uevent)
{
    for (const QJsonValue value : machine[QStringLiteral("supplies")].toArray()) {
        const QJsonObject supply = value.toObject();
        const std::string name = supply[QStringLiteral("name")].toString().toStdString();
        folder.addSupply(name, attributesOf(supply[QStringLiteral("attrs")].toObject()));
        if (uevent == Uevent::Empty)
            folder.write("class/power_supply/" + name + "/uevent", "");
    }
    for (const char* deviceClass : {"hwmon", "powercap"}) {
        for (const QJsonValue value : machine[QLatin1String(deviceClass)].toArray()) {
            const QJsonObject device = value.toObject();
            const std::string name = device[QStringLiteral("dir")].toString().toStdString();
            folder.addDevice(std::string("class/") + deviceClass + '/' + name,
                attributesOf(device[QStringLiteral("attrs")].toObject()));
        }
    }
}

std::string inWords(std::optional<double> figure)
{
    return figure ? std::to_string(*figure) : "unknown";
}

bool isNear(const QJsonValue& value, std::optional<double> figure, double tolerance)
{
    if (value.isNull())
        return !figure;
    const double wanted = value.isBool() ? (value.toBool() ? 1.0 : 0.0) : value.toDouble();
    return figure && std::abs(*figure - wanted) <= tolerance;
}

class MachineTest {
public:
    explicit MachineTest(const QJsonObject& machine)
        : m_expected(machine[QStringLiteral("expected")].toObject())
        , m_accepted(m_expected[QStringLiteral("accept")].toObject())
    {
    }

    void expect(const char* key, std::optional<double> figure, double tolerance) const
    {
        bool isRight = isNear(m_expected[QLatin1String(key)], figure, tolerance);
        for (const QJsonValue value : m_accepted[QLatin1String(key)].toArray())
            isRight = isRight || isNear(value, figure, tolerance);
        EXPECT_TRUE(isRight) << key << " is " << inWords(figure) << "; "
                             << QJsonDocument(m_expected).toJson().constData();
    }

private:
    QJsonObject m_expected;
    QJsonObject m_accepted;
};

void expectHonestReadings(Uevent uevent)
{
    const QDir folder = machinesFolder();
    const QStringList names = folder.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    if (names.isEmpty())
        GTEST_SKIP()
            << "No machines are kept beside this repository; AMPERLY_MACHINES can name their folder.";

    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QJsonObject machine = QJsonDocument::fromJson(file.readAll()).object();
        ASSERT_TRUE(machine.contains(QStringLiteral("expected")));

        SysfsFolder sysfs;
        build(sysfs, machine, uevent);
        PosixFiles files;
        LinuxPowerSource source(files, sysfs.root());
        for (int turn = 0; turn < 3; ++turn) {
            const std::optional<PowerSample> sample = source.read();
            const auto optionalOf = [](std::optional<int> value) {
                return value ? std::optional<double>(*value) : std::nullopt;
            };
            const MachineTest test(machine);
            test.expect("battery_w", sample ? batteryFlow(sample) : std::nullopt, 0.001);
            test.expect("system_load_w", sample ? load(sample) : std::nullopt, 0.001);
            test.expect("adapter_in_w", sample ? adapterIn(sample) : std::nullopt, 0.001);
            test.expect("percent", sample ? optionalOf(sample->batteryPercent) : std::nullopt, 1.0);
            test.expect("adapter_rating_w", sample ? optionalOf(sample->adapterRating) : std::nullopt, 0.5);
            test.expect("external",
                sample ? std::optional(sample->externalConnected ? 1.0 : 0.0) : std::nullopt, 0.0);
        }
    }
}

TEST(MachinesTest, ReadingsAreHonestByUevent)
{
    expectHonestReadings(Uevent::Told);
}

TEST(MachinesTest, ReadingsAreHonestBySingleAttributes)
{
    expectHonestReadings(Uevent::Empty);
}

} // namespace
} // namespace amperly
