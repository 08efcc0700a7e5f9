// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <csignal>

#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

/// While it lives, no file of this process gets longer than so many bytes: the write that would make it so
/// writes a part, the next one fails, as on a full disk. Pipes are not concerned.
class FullDisk
{
public:
    explicit FullDisk(qint64 bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {rlim_t(bytes), m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    Q_DISABLE_COPY(FullDisk)

    rlimit m_before = {};
};

/// Lets the permissions of files count for this process also when the system's administrator runs it.
inline void obeyPermissions()
{
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2] = {};
    syscall(SYS_capget, &header, data);
    data[0].effective &= ~(1U << CAP_DAC_OVERRIDE);
    syscall(SYS_capset, &header, data);
}
