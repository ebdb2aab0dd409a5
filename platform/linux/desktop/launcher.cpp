#include "platform/linux/desktop/launcher.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace amperly {

bool isProgram(const std::string& name)
{
    return !QStandardPaths::findExecutable(QString::fromStdString(name)).isEmpty();
}

bool startDetached(const CommandLine& command)
{
    if (command.empty())
        return false;
    QStringList arguments;
    for (std::size_t index = 1; index < command.size(); ++index)
        arguments.append(QString::fromStdString(command[index]));
    QProcess process;
    process.setProgram(QString::fromStdString(command.front()));
    process.setArguments(arguments);
    // What a browser has to say does not belong in this program's output.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

} // namespace amperly
