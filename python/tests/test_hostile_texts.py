# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Untrusted texts: published attacks on packages that evaluate Python have no effect except an error.

They are taken from the advisories and tests of such packages: imports, chains of attributes up to object and its
subclasses, format strings, comprehensions and lambdas, walruses, decorators, and texts that exhaust memory or time.
"""

import os
import subprocess
import sys
import time

import mathexpr
import pytest
from mathexpr import Limits

ATTACKS = [
    "__import__('os').system('touch {mark}')",
    "__import__(\"os\").popen(\"touch {mark}\").read()",
    "open('{mark}','w')",
    "open('/etc/passwd').read()",
    "eval(\"open('{mark}','w')\")",
    "exec('import os')",
    "import os",
    "().__class__.__bases__[0].__subclasses__()",
    "''.__class__.__mro__[1].__subclasses__()",
    "[].__class__.__base__.__subclasses__()[40]('{mark}','w')",
    "[c for c in ().__class__.__bases__[0].__subclasses__() if c.__name__=='Popen'][0]('touch {mark}',shell=True)",
    "(lambda: open('{mark}','w'))()",
    "(lambda f: f(f))(lambda f: f(f))",
    "(x:=__builtins__)",
    "'{{0.__class__.__mro__}}'.format(1)",
    "f'{{__import__(\"os\")}}'",
    "'%s' % __builtins__",
    "getattr(x,'__class__')",
    "setattr(x,'__class__',1)",
    "globals()['__builtins__']",
    "locals()",
    "vars()",
    "dir(x)",
    "x.__class__",
    "x.real.__class__.__init__.__globals__",
    "x.__array__.__self__",
    "type('X',(),{{'__del__':lambda s:1}})()",
    "breakpoint()",
    "exit()",
    "quit()",
    "raise SystemExit",
    "yield 1",
    "[x for x in range(10)]",
    "print('{mark}')",
    "numpy.load('{mark}')",
    "np.fromfile('{mark}')",
    "os.environ['HOME']",
    "@x",
    "x; y",
    "x\nimport os",
    "x if x else y",
    "$(touch {mark})",
    "`touch {mark}`",
    "x | touch {mark}",
    "%s%s%s%n",
    "../../etc/passwd",
    "<script>alert(1)</script>",
]


@pytest.mark.parametrize("attack", ATTACKS)
def test_an_attack_is_a_text_that_fails(attack, tmp_path):
    mark = tmp_path / "mark"
    text = attack.format(mark=mark)
    before = dict(os.environ)
    for use in (
        lambda: mathexpr.evaluate(text, {"x": 1, "y": 2}),
        lambda: mathexpr.Expression(text, {"x": 1, "y": 2}),
        lambda: mathexpr.function(text, "x", "y"),
        lambda: mathexpr.evaluate_arrays(text, {"x": [1, 2], "y": [3, 4]}),
    ):
        with pytest.raises(mathexpr.MathExprError):
            use()
    assert not mark.exists() and dict(os.environ) == before
    assert mathexpr.evaluate("x+y", {"x": 1, "y": 2}) == 3


BOMBS = {
    "a tower of powers": "9^9^9^9^9^9^9^9",
    "a huge number": "9" * 400 + ".0",
    "large factors": "10^300*10^300",
    "a shift, as Python has it": "1<<10^9",
    "a text times a number": "'a'*10^9",
    "a long sum": "1+" * 200_000 + "1",
    "many brackets": "(" * 100_000 + "1" + ")" * 100_000,
    "many minuses": "-" * 100_000 + "1",
    "many functions": "sin(" * 50_000 + "1" + ")" * 50_000,
}


@pytest.mark.parametrize("text", BOMBS.values(), ids=BOMBS)
def test_what_eats_up_time_elsewhere_ends_soon(text):
    start = time.monotonic()
    try:
        assert isinstance(mathexpr.evaluate(text), float)
    except mathexpr.MathExprError:
        pass
    assert time.monotonic() - start < 20  # a quarter of a second on an idle machine


@pytest.mark.parametrize("text", [text for text in BOMBS.values() if len(text) > 1000])
def test_limits_refuse_a_long_text_before_anything_of_it_is_compiled(text):
    limits = Limits(max_text_length=1000, max_records=200, max_nesting=20)
    for use in (
        lambda: mathexpr.evaluate(text, limits=limits),
        lambda: mathexpr.evaluate_number(text, limits=limits),
        lambda: mathexpr.function(text, limits=limits),
        lambda: mathexpr.Expression(text, limits=limits),
        lambda: mathexpr.evaluate_arrays(text, {"x": [1]}, limits=limits),
    ):
        with pytest.raises(mathexpr.ParsingError) as caught:
            use()
        assert caught.value.code == 17


def test_names_never_come_from_the_frame_of_the_caller():
    width = 3
    for use in (
        lambda: mathexpr.evaluate("2*width"),
        lambda: mathexpr.function("2*width"),
        lambda: mathexpr.Expression("2*width"),
        lambda: mathexpr.evaluate_arrays("2*width*x", {"x": [1]}),
    ):
        with pytest.raises(mathexpr.ParsingError) as caught:
            use()
        assert caught.value.code == 11
    assert mathexpr.evaluate("2*width", {"width": width}) == 6


def test_evaluating_asks_nothing_of_python_that_is_audited():
    program = """
import sys, mathexpr
def work():
    for text in ("1+2", "sin(30)*[1,2,3]", "x+y", "open('a')", "1/0"):
        try:
            mathexpr.evaluate(text)
        except mathexpr.MathExprError:
            pass
work()  # what is imported late is there now
events = []
sys.addaudithook(lambda event, arguments: events.append(event))
work()
told, events = events, []
open(sys.executable).close()
print(*sorted({event for event in told if event != "import"}), "open" in events)
"""
    done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, check=True)
    assert done.stdout == "True\n"
