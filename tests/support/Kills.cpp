#include "support/Kills.h"

#include <QtCore/QThread>

#include <cstdio>
#include <random>

namespace test {

int KillsOfRun()
{
    const int asked = qEnvironmentVariableIntValue("KTQDDE_KILLS");
    return asked > 0 ? asked : 10;
}

QRandomGenerator MomentsOfRun()
{
    const unsigned seed = qEnvironmentVariableIsSet("KTQDDE_KILL_SEED")
                              ? qEnvironmentVariable("KTQDDE_KILL_SEED").toUInt()
                              : std::random_device{}();
    std::printf("seed %u\n", seed);
    return QRandomGenerator(seed);
}

void PassTime(QRandomGenerator& moments, int milliseconds)
{
    QThread::usleep(moments.bounded(static_cast<quint32>(milliseconds) * 1000));
}

} // namespace test
