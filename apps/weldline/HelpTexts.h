#pragma once

namespace weldline {

// Texts of --help beside the options themselves.

inline constexpr const char* programDescription =
    "Weld lines of a filling result: where melt fronts meet, and at what angle.";

inline constexpr const char* programFooter =
    "Examples:\n"
    "  weldline info part.vtu\n"
    "  weldline analyze part.vtu -o result.vtu\n"
    "  weldline report result.vtu -o report.html\n"
    "  weldline render result.vtu -o result.png\n"
    "  weldline settings > run.cmp\n"
    "\n"
    "'weldline COMMAND --help' tells more about a command.\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running, 2 wrong usage, 3 unusable input,\n"
    "10 a weld line fulfils the rule of --fail-on.\n";

inline constexpr const char* noSuchCommand =
    ": no command of the program; use analyze, check, compare, explain, filltime, info, render, "
    "report or settings, or see 'weldline --help'";

inline constexpr const char* analyzeFooter =
    "Examples:\n"
    "  weldline analyze part.vtu\n"
    "      table of the weld lines on the terminal\n"
    "  weldline analyze case.foam -o out/case.vtu --json out/case.json\n"
    "      also mesh with MeetingAngle and WeldLine, and a JSON summary\n"
    "  weldline analyze part.vtu --field arrival --inlet 'nozzle|runner'\n"
    "      other names of the fill time and of the inlet patches\n"
    "  weldline analyze part.vtu --method 2 --set nSmooth_afterGrad=8\n"
    "      other settings; 'weldline settings' explains the keys\n"
    "  weldline analyze part.vtu --json - | jq .counts\n"
    "      the JSON summary alone on standard output\n"
    "  weldline analyze part.vtu --min-length 2 --lines lines.vtp --csv lines.csv\n"
    "      the lines for a viewer and for a spreadsheet, without specks\n"
    "  weldline analyze part.vtu --fail-on 'angle<60 & length>5'\n"
    "      exit code 10 if a line is that bad: a design check in a script\n"
    "  mpirun -n 4 weldline analyze part.pvtu -o result.pvtu\n"
    "      four processes, each with its own pieces of input and result\n"
    "\n"
    "The table (or, with '--json -', the JSON) goes to standard output, all messages\n"
    "to standard error. With -o and without --control the settings are kept in a\n"
    "control file beside the result: RESULT.cmp. It is never written over a file of\n"
    "that name that the program did not write. --control cannot be combined with\n"
    "--set, --method and --gradient. With the setting FlagDebugOutput=1 the trace of\n"
    "the calculation is kept beside the control file: NAME_KVRWDLineDebug.txt. All\n"
    "files appear whole, at the end of the run, or not at all.\n"
    "\n"
    "-o RESULT.pvtu writes one piece per process, RESULT_KEY_N.vtu, and removes the\n"
    "pieces of the result before. -o RESULT.vtu writes one file; of several processes\n"
    "the first then needs memory for the whole.\n"
    "\n"
    "A rule compares angle (smallest), mean (angle), length, nodes, first, last\n"
    "(time) or class (weld, meld) of a line by <, <=, >, >= or =, joined by & and |.\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running (disk full, out of memory, ...),\n"
    "2 wrong usage, 3 unusable input, 10 a weld line fulfils the rule of --fail-on.\n";

inline constexpr const char* compareFooter =
    "Examples:\n"
    "  weldline compare one-gate.vtu two-gates.vtu\n"
    "      which lines stay, change, move, go and come\n"
    "  weldline compare a.vtu b.vtu --limit 135 --min-nodes 10\n"
    "      only where fronts meet at less than 135 degrees, without specks\n"
    "  weldline compare a.vtu b.vtu --json - | jq .counts\n"
    "\n"
    "Lines are matched by place, nearest first. The meshes may differ; the parts must\n"
    "lie in the same place and have the same unit of length.\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running, 2 wrong usage, 3 unusable input.\n";

inline constexpr const char* explainFooter =
    "Examples:\n"
    "  weldline explain result.vtu --node 4711\n"
    "      why this node has its meeting angle; nodes count from 0, as viewers show them\n"
    "  weldline explain result.vtu --at 0.5,0,-0.02\n"
    "      the same for the node nearest to a place\n"
    "  weldline explain result.vtu --node 4711 --json - | jq '.pairs[] | select(.kept)'\n"
    "\n"
    "The calculation runs once more on the mesh, the fill time and the settings that the\n"
    "result holds. Methods 1, 2 and 4 are explained.\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running, 2 wrong usage, 3 unusable input.\n";

inline constexpr const char* infoFooter =
    "Examples:\n"
    "  weldline info case.foam\n"
    "  weldline info case.foam --time 1.5\n"
    "  weldline info part.vtu --inlet 'nozzle|runner'\n"
    "      try patterns: the list shows the group of every patch\n"
    "  weldline info part.vtu --json - | jq .arrays\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running, 2 wrong usage, 3 unusable input.\n";

inline constexpr const char* renderFooter =
    "Examples:\n"
    "  weldline render result.vtu -o result.png\n"
    "  weldline render result.vtu -o sheet.png --view +z --view -y --view iso\n"
    "      several views in one picture\n"
    "  weldline render result.vtu -o poster.png --size 6000x4000 --background dark\n"
    "  weldline render result.vtu -o inside.png --view 30,20 --through\n"
    "      also what the part hides of its lines\n"
    "  weldline render result.vtu -o worst.png --limit 60 --min-length 5\n"
    "      only where fronts meet at less than 60 degrees, lines of at least 5 units\n"
    "\n"
    "The part shows its fill time in bands, grey where the melt did not come, the\n"
    "lines on its skin their meeting angle. Lengths and times are in the units of the\n"
    "data set. Neither a display nor a graphics card is needed.\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running (no OpenGL on this machine, disk full,\n"
    "...), 2 wrong usage, 3 unusable input.\n";

inline constexpr const char* reportFooter =
    "Examples:\n"
    "  weldline report result.vtu -o report.html\n"
    "  weldline report result.vtu -o report.html --limit 135 --min-nodes 10\n"
    "      only where fronts meet at less than 135 degrees, without specks\n"
    "\n"
    "The page needs no network and no other file: send it as it is. It shows the part,\n"
    "the lines, how the part fills, and a table of the lines.\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running, 2 wrong usage, 3 unusable input.\n";

inline constexpr const char* settingsFooter =
    "Examples:\n"
    "  weldline settings > run.cmp\n"
    "      a control file to start from\n"
    "  weldline settings --check run.cmp\n"
    "      what each line will really do, and the settings in force\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running, 2 wrong usage, 3 unusable input.\n";

}  // namespace weldline
