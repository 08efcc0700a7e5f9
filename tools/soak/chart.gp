# SPDX-License-Identifier: MIT
# Draws the samples of a soak run: gnuplot -c chart.gp samples.csv picture.svg
set terminal svg size 860,800 font "DejaVu Sans,12" background "white"
set output ARG2
set datafile separator ","
set multiplot layout 4,1
set lmargin 9
set grid ytics
set yrange [0:*]
set offsets 0, 0, graph 0.1, 0
unset key

array titles[4] = ["memory (resident), MB", "open descriptors", "load, % of a core", "log, MB"]
array units[4] = [1024.0, 1, 1, 1024.0]
do for [chart=1:4] {
    set title titles[chart]
    if (chart == 4) { set xlabel "minutes" }
    plot ARG1 using 1:(column(chart + 1) / units[chart]) every ::1 with lines linecolor rgb "#1f6fb2"
}
