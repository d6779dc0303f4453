#!/bin/sh
# Runs one Windows program under Wine for CTest and for gtest's test discovery.
#
# The Wine server is asked to outlive each program by a minute: the suite starts
# hundreds of short programs, and a server started afresh for each costs seconds.
# When this call is the one that started it, Wine's own background processes are
# started here too, with no output, so that none of them inherits (and holds open)
# the output pipe through which CTest reads the program's output.
if "$VQK_WINESERVER" -p 60 </dev/null >/dev/null 2>&1; then
  "$VQK_WINE" wineboot </dev/null >/dev/null 2>&1
fi
exec "$VQK_WINE" "$@"
