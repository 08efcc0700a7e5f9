// SPDX-License-Identifier: MIT
#include "rotctld/repeatedtargets.h"

#include <algorithm>

namespace {

template <typename Targets, typename Predicate>
void removeIf(Targets &targets, Predicate predicate)
{
    targets.erase(std::remove_if(targets.begin(), targets.end(), predicate), targets.end());
}

template <typename Targets>
auto findOf(Targets &targets, const void *client)
{
    return std::find_if(targets.begin(), targets.end(),
                        [client](const auto &target) { return target.client == client; });
}

} // namespace

bool RepeatedTargets::isRepeated(const void *client, int degrees, qint64 nowMs)
{
    removeIf(m_targets, [&](const Target &target) { return nowMs - target.lastMs > m_longestGapMs; });
    const auto own = findOf(m_targets, client);
    const auto isSame = [degrees](const Target &target) { return target.degrees == degrees; };
    if (own == m_targets.end() ? std::none_of(m_targets.begin(), m_targets.end(), isSame) : !isSame(*own))
        return false;
    note(client, degrees, nowMs);
    return true;
}

void RepeatedTargets::note(const void *client, int degrees, qint64 nowMs)
{
    const auto own = findOf(m_targets, client);
    if (own == m_targets.end())
        m_targets.push_back({client, degrees, nowMs});
    else
        *own = {client, degrees, nowMs};
}

void RepeatedTargets::forget(const void *client)
{
    removeIf(m_targets, [client](const Target &target) { return target.client == client || !target.client; });
}

void RepeatedTargets::clientLeft(const void *client)
{
    const auto own = findOf(m_targets, client);
    if (own != m_targets.end())
        own->client = nullptr;
}
