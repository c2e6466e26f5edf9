#pragma once

#include <QtCore/QRandomGenerator>

namespace test {

/// How many programs a test kills at random moments: the environment variable `KTQDDE_KILLS`, else 10.
int KillsOfRun();
/// What chooses the moments; prints its seed. The environment variable `KTQDDE_KILL_SEED` sets another one.
QRandomGenerator MomentsOfRun();
/// Lets a random time pass, of at most so many milliseconds.
void PassTime(QRandomGenerator& moments, int milliseconds);

} // namespace test
