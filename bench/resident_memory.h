// The resident memory of a process as what a benchmark measures.
#pragma once

#include <QFile>

#include <benchmark/benchmark.h>

/// Of this process, in KiB.
inline long resident_kib() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith("VmRSS:")) {
                return line.mid(6).trimmed().split(' ').first().toLong();
            }
        }
    }
    return 0;
}

/// Tells it as if a KiB were a microsecond, so that a pair can be compared; with UseManualTime.
inline void set_memory(benchmark::State& state, double kib) {
    state.SetIterationTime(kib / 1e6);
}
