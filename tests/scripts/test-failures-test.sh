#!/usr/bin/env bash
# What the end of a test run tells of the tests that failed: each once, with where and why, though the
# programs printed by turns.
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd -P)

said=$(awk -f "$top/scripts/ctest-lines.awk" -f "$top/scripts/test-failures.awk" <<'LOG'
      Start  1: unit_tests
      Start  2: end_to_end_tests
1: [==========] Running 3 tests from 1 test suite.
1: [ RUN      ] TextTest.Passes
2: [ RUN      ] DialTest.Fails
1: [       OK ] TextTest.Passes (3 ms)
2: /somewhere/tests/end_to_end/DialTest.cpp:33: Failure
2: Expected equality of these values:
1: [ RUN      ] TextTest.FailsToo
2:   a
1: /somewhere/tests/unit/TextTest.cpp:3: Failure
1: Failed
2: [  FAILED  ] DialTest.Fails (22 ms)
1: [  FAILED  ] TextTest.FailsToo/0, where GetParam() = 3 (2 ms)
2: [ RUN      ] DialTest.Stays
1: [  FAILED  ] TextTest.FailsToo/0, where GetParam() = 3
1/4 Test #1: unit_tests .......................***Failed    0.10 sec
2/4 Test #2: end_to_end_tests .................***Timeout  900.10 sec
      Start  3: docs
      Start  4: format
3: one
3: two
3: three
4: all is well
3/4 Test #3: docs .............................***Failed    0.10 sec
4/4 Test #4: format ...........................   Passed    0.10 sec
LOG
)
expected='  end_to_end_tests: DialTest.Fails (22 ms)
      tests/end_to_end/DialTest.cpp:33: Failure
      Expected equality of these values:
        a
  unit_tests: TextTest.FailsToo/0, where GetParam() = 3 (2 ms)
      tests/unit/TextTest.cpp:3: Failure
      Failed
  end_to_end_tests: DialTest.Stays did not end
  docs
      two
      three'
[ "$said" = "$expected" ] || { diff <(echo "$expected") <(echo "$said") >&2; exit 1; }
