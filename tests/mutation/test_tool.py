"""Tests of the mutation tool itself: which mutants it makes, and how it names them."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))

from mutants import mutants_of  # noqa: E402
from survivors import Explanations, Reason, render, replace_section, section_of  # noqa: E402


def made(text, operation):
    """The texts that the mutants of one operation turn a function body into."""
    source = f"void f() {{\n    {text}\n}}\n"
    mutants = [m for m in mutants_of("core/F.cpp", source) if m.operation == operation]
    return [m.apply(source).split("{\n    ", 1)[1].rsplit("\n}", 1)[0] for m in mutants]


class Mutations(unittest.TestCase):
    def test_relations_turn_to_their_neighbours(self):
        self.assertEqual(made("x = a < b;", "relation"), ["x = a <= b;", "x = a > b;"])

    def test_clamps_stay_at_their_limit(self):
        self.assertEqual(made("if (a[i] < b) a[i] = b;", "relation"), ["if (a[i] > b) a[i] = b;"])
        self.assertEqual(made("if (a >= b) b = a;", "relation"), ["if (a == b) b = a;"])

    def test_relations_are_told_from_templates(self):
        self.assertEqual(made("x = static_cast<int>(y);", "relation"), [])

    def test_unordered_form_differs_for_what_is_not_a_number(self):
        self.assertEqual(made("x = a[1] > b && c;", "unordered"), ["x = !(a[1] <= b) && c;"])

    def test_products_are_told_from_pointers(self):
        self.assertEqual(made("const double* p = *q * r;", "arithmetic"), ["const double* p = *q / r;"])

    def test_loop_heads_keep_their_step(self):
        self.assertEqual(made("for (int i = 0; i < n; ++i) g(i);", "arithmetic"), [])

    def test_loops_run_backwards(self):
        self.assertEqual(
            made("for (int i = 1; i <= n; ++i) x += f(i);", "order"),
            ["for (int i = n + 1; i-- > 1;) x += f(i);"],
        )

    def test_loops_that_add_nothing_up_do_not(self):
        self.assertEqual(made("for (int i = 1; i <= n; ++i) x[i] = 0;", "order"), [])

    def test_neighbouring_calls_change_places(self):
        self.assertEqual(made("g(1);\n    h(2);", "order"), ["h(2);\n    g(1);"])

    def test_calls_and_assignments_are_left_out_but_not_declarations(self):
        self.assertEqual(
            made("int x = 0; g(x); h.x[2] += 1;", "deletion"),
            ["int x = 0; ; h.x[2] += 1;", "int x = 0; g(x); ;"],
        )

    def test_operands_are_dropped_from_conditions(self):
        self.assertEqual(made("x = a(1) && b;", "operand dropped"), ["x = b;", "x = a(1);"])

    def test_operands_change_places(self):
        self.assertEqual(made("x = a[i] - b.c(1);", "operands"), ["x = b.c(1) - a[i];"])

    def test_components_are_mistaken(self):
        self.assertEqual(made("v = a.x + x;", "component"), ["v = a.y + x;"])
        self.assertEqual(made("v = m_pWallFaceZc;", "component"), ["v = m_pWallFaceXc;"])

    def test_trace_lines_stay_with_their_steps(self):
        self.assertEqual(made('trace(r, "a");\n    h(2);', "order"), [])

    def test_sums_are_bracketed_anew(self):
        self.assertEqual(made("x = (a + b) + c * d;", "bracketing"), ["x = a + (b + c * d);"])
        self.assertEqual(made("x = a + b + c;", "bracketing"), ["x = a + (b + c);"])

    def test_reals_move_by_one_bit(self):
        self.assertEqual(
            made("x = 0.5;", "constant"), ["x = 0.5000000000000001;", "x = 0.49999999999999994;"]
        )

    def test_arguments_that_look_alike_change_places(self):
        self.assertEqual(made("g(a, b, 1);", "arguments"), ["g(b, a, 1);"])

    def test_comments_and_preprocessor_lines_stay(self):
        self.assertEqual(mutants_of("core/F.h", "#include <a + b>\n// a < b\n/* 1 */\n"), [])


class Names(unittest.TestCase):
    def test_outlive_edits_of_other_lines(self):
        before = {m.id for m in mutants_of("core/F.cpp", "void f() {\n    g(a < b);\n}\n")}
        after = {m.id for m in mutants_of("core/F.cpp", "int x;\n\nvoid f() {\n  g(a < b);\n}\n")}
        self.assertTrue(before)
        self.assertLessEqual(before, after)

    def test_tell_equal_lines_apart(self):
        mutants = mutants_of("core/F.cpp", "void f() {\n    g(1);\n    h();\n    g(1);\n}\n")
        self.assertEqual(len(mutants), len({m.id for m in mutants}))


class Document(unittest.TestCase):
    def test_section_is_replaced_and_found_again(self):
        mutants = mutants_of("core/F.cpp", "void f() {\n    g(a || b);\n}\n")
        section = render([Reason("Title", "Why.", False, (mutants[0].id,))], mutants)
        document = replace_section("before\n" + render([], []) + "\nafter\n", section)
        self.assertEqual(section_of(document), section)
        self.assertTrue(document.startswith("before\n") and document.endswith("\nafter\n"))
        self.assertIn("a \\|\\| b", document)

    def test_explanations_without_a_mutant_are_found(self):
        self.assertEqual(
            Explanations([Reason("T", "W", False, ("gone",))]).without_mutant([]), ["gone"]
        )


if __name__ == "__main__":
    unittest.main()
