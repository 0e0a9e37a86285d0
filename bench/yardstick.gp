# glyphwright-cli's time over the yardstick's against the pixel size, one
# thread and all cores: gnuplot -e "data='yardstick.tsv'; out='bench.png'; cores=N" bench/yardstick.gp
set terminal pngcairo size 900,560 font "DejaVu Sans,11"
set output out
set title "IPAGothic, 16 levels, no soft anti-aliasing: whole processes against ftlimit (medians)"
set xlabel "pixel size (px per em)"
set ylabel "glyphwright-cli time / ftlimit time"
set key top left
set grid
set xrange [0:*]
set yrange [0:*]
plot data using 1:2 with linespoints lw 2 pt 7 title "--threads 1", \
     data using 1:3 with linespoints lw 2 pt 5 title sprintf("all cores (%d)", cores), \
     1 with lines lw 1 dt 2 lc rgb "gray40" title "ftlimit"
