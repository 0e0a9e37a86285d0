# Milliseconds per 1 000 glyphs against the pixel size, from report.py's
# plot data: gnuplot -e "data='PLOT.tsv'; out='bench.png'" bench/plot.gp
set terminal pngcairo size 900,560 font "DejaVu Sans,11"
set output out
set title "IPAGothic, 16 levels, no soft anti-aliasing (whole processes, medians)"
set xlabel "pixel size (px per em)"
set ylabel "milliseconds per 1 000 glyphs"
set key top left
set grid
set xrange [0:*]
set yrange [0:*]
plot data using 1:2 with linespoints lw 2 pt 7 title "glyphwright-cli convert", \
     data using 1:3 with linespoints lw 2 pt 5 title "bare FreeType loop"
