#!/usr/bin/env bash
# Draws the pictures of the documentation into docs/images: curves with gnuplot, from the formulas that the pages state and
# from the output of zor (the first argument, or the one on the path). The drawings of axes are written by hand.
set -euo pipefail
cd "$(dirname "$0")/.."
zor=${1:-zor}
scratch=$(mktemp -d)
trap 'rm -r "$scratch"' EXIT

# Runs gnuplot on standard input; the picture is docs/images/NAME.svg, numbers with few digits.
draw() {
  {
    echo "set terminal svg size 640,${2:-300} font 'sans-serif,13' background 'white'"
    echo "set output '$scratch/$1.svg'; set grid lc rgb '#dddddd'; set border lc rgb '#888888'; set samples 100; set encoding utf8"
    cat
  } | LC_ALL=C.UTF-8 gnuplot
  # Symbols that are not used stay out.
  grep -o "href='#gpPt[0-9]*'" "$scratch/$1.svg" | sort -u | sed "s/href='#\(.*\)'/id='\1'/" >"$scratch/used" || true
  sed -E 's/^[[:space:]]+//; s/[[:space:]]+$//; /^$/d; /tspan/!s/([0-9]\.[0-9])[0-9]+/\1/g' "$scratch/$1.svg" |
    { grep -v "id='gpPt" || true; } >"docs/images/$1.svg"
  grep -F -f "$scratch/used" "$scratch/$1.svg" >"$scratch/symbols" || true
  sed -i "/id='gpDot'/r $scratch/symbols" "docs/images/$1.svg"
}

draw blends 260 <<'END'
set xlabel 't'; set ylabel 'degrees per t'; set key top right; set xrange [0:1]; set yrange [80:160]
h = pi / 3   # half of 120 degrees is the arc between the quaternions
speed(t) = 2 * sin(h) / ((1 - t)**2 + t**2 + 2 * t * (1 - t) * cos(h)) * 180 / pi
plot 120 title 'SLerp' lw 2 lc rgb '#1f5fa8', speed(x) title 'NLerp' lw 2 lc rgb '#c8501e'
END

draw basis 280 <<'END'
# Clamped cubic basis over the inner knots 0.195, 0.456, 0.651.
array U[11] = [0, 0, 0, 0, 0.195, 0.456, 0.651, 1, 1, 1, 1]
part(n, d) = d == 0 ? 0 : n / d
N(i, p, u) = p == 0 ? (u >= U[i] && u < U[i + 1] ? 1 : 0) : \
  part(u - U[i], U[i + p] - U[i]) * N(i, p - 1, u) + part(U[i + p + 1] - u, U[i + p + 1] - U[i + 1]) * N(i + 1, p - 1, u)
set xlabel 'u'; set xrange [0:0.9999]; set yrange [0:1]; unset key
set xtics ('0' 0, '0.195' 0.195, '0.456' 0.456, '0.651' 0.651, '1' 1)
plot for [i = 1:7] N(i, 3, x) lw 2
END

# Long and short steps beside each other: where the three ways to spread the parameter differ most.
printf '%s\n' 0,0,0,0,0,1 30,0,0,0,0,1 32,2,0,0,0,1 32,6,0,0,0,1 30,8,0,0,0,1 0,8,0,0,0,1 >"$scratch/turn.txt"
for method in equal chord centripetal; do
  "$zor" resample "$scratch/turn.txt" --method $method --step 0.5 --decimals 2 -o "$scratch/$method.txt"
done
draw methods 300 <<END
set datafile separator ','; set size ratio -1; set key outside right; set xrange [-2:42]; set yrange [-4:12]
plot '$scratch/equal.txt' using 1:2 with lines lw 2 lc rgb '#999999' title 'mEqually', \
  '$scratch/chord.txt' using 1:2 with lines lw 2 lc rgb '#c8501e' title 'mChord', \
  '$scratch/centripetal.txt' using 1:2 with lines lw 2 lc rgb '#1f5fa8' title 'mCentripetal', \
  '$scratch/turn.txt' using 1:2 with points pt 7 ps 0.7 lc rgb '#222222' title 'given'
END

draw bezier 280 <<'END'
set parametric; set trange [0:1]; set size ratio -1; unset key; set xrange [-1:7]; set yrange [-0.5:4.5]
$p << EOD
0 0 P0
0 4 P1
6 4 P2
6 0 P3
EOD
bx(t) = 18 * (1 - t) * t**2 + 6 * t**3
by(t) = 12 * (1 - t)**2 * t + 12 * (1 - t) * t**2
plot $p using 1:2 with linespoints pt 7 ps 0.6 dt 2 lc rgb '#888888', $p using 1:2:3 with labels offset 1.5,0.6, \
  bx(t), by(t) with lines lw 2 lc rgb '#1f5fa8'
END

for window in hamming blackman rectangle; do
  "$zor" filter --fs 1000 --fc 50 --order 41 --window $window --response -o "$scratch/$window.txt" --decimals 6
done
draw windows 320 <<END
set datafile separator ','; set xlabel 'frequency, Hz'; set ylabel 'response, dB'; set yrange [-100:5]; set xrange [0:300]
db(x) = x > 0 ? 20 * log10(x) : -200
plot '$scratch/rectangle.txt' using 1:(db(\$2)) with lines lw 2 lc rgb '#999999' title 'rectangle', \
  '$scratch/hamming.txt' using 1:(db(\$2)) with lines lw 2 lc rgb '#1f5fa8' title 'Hamming', \
  '$scratch/blackman.txt' using 1:(db(\$2)) with lines lw 2 lc rgb '#c8501e' title 'Blackman'
END

draw leakage 280 <<'END'
set xlabel 'bin'; set ylabel 'amplitude'; set xrange [0:12]; set yrange [0:1.1]; set samples 13
dirichlet(d) = abs(d) < 1e-9 ? 1 : abs(sin(pi * d) / (64 * sin(pi * d / 64)))
plot dirichlet(x - 5) with impulses lw 6 lc rgb '#1f5fa8' title 'a cosine on bin 5', \
  dirichlet(x - 5.5) with points pt 7 lc rgb '#c8501e' title 'one half way to bin 6'
END

draw green 260 <<'END'
set xlabel 'distance d'; set ylabel 'd^2 (ln d - 1)'; set xrange [0.001:3.2]; unset key
plot x**2 * (log(x) - 1) lw 2 lc rgb '#1f5fa8'
END
