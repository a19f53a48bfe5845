"""Parsers on many threads: one Parser per thread gives every thread the answers one thread
gets; a Parser shared by threads, or closed under one, serialises them without a crash; and a
parse lets other threads run."""

from __future__ import annotations

import threading
import time

from conftest import SAMPLES

import orvane_parser
from orvane_parser import Parser

INPUTS = [sample.read_bytes() for sample in SAMPLES]


def baseline() -> list[dict]:
    with Parser() as parser:
        return [parser.parse(data).to_dict() for data in INPUTS]


def run_threads(count: int, work) -> list:
    results: list = [None] * count
    errors: list = []

    def run(index: int) -> None:
        try:
            results[index] = work(index)
        except BaseException as error:  # noqa: BLE001 - handed to the main thread
            errors.append(error)

    threads = [threading.Thread(target=run, args=(i,)) for i in range(count)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not errors, errors
    return results


def parse_everything(parse, rounds: int = 20) -> list[dict]:
    answers = []
    for round_ in range(rounds):
        # Each thread walks the samples from its own starting point, so that they differ at any moment.
        for data in INPUTS[round_ % len(INPUTS) :] + INPUTS[: round_ % len(INPUTS)]:
            answers.append(parse(data).to_dict())
    return answers


def expected_answers(rounds: int = 20) -> list[dict]:
    answers = baseline()
    expected = []
    for round_ in range(rounds):
        shift = round_ % len(INPUTS)
        expected += answers[shift:] + answers[:shift]
    return expected


def without_clock(answers: list[dict]) -> list[dict]:
    # Age and expiry are of the day of the parse, which may turn over during the test.
    return [{key: value for key, value in answer.items() if key not in ("age", "expired")} for answer in answers]


def test_one_parser_per_thread():
    def work(_: int) -> list[dict]:
        with Parser() as parser:
            return parse_everything(parser.parse)

    expected = without_clock(expected_answers())
    for answers in run_threads(4, work):
        assert without_clock(answers) == expected


def test_module_parse_on_threads():
    expected = without_clock(expected_answers())
    for answers in run_threads(4, lambda _: parse_everything(orvane_parser.parse)):
        assert without_clock(answers) == expected


def test_a_shared_parser_serialises_its_callers():
    shared = Parser()
    expected = without_clock(expected_answers(5))
    for answers in run_threads(4, lambda _: parse_everything(shared.parse, 5)):
        assert without_clock(answers) == expected


def test_closing_a_parser_that_another_thread_uses():
    parser = Parser()
    outcomes: list[str] = []

    def keep_parsing() -> None:
        try:
            while True:
                for data in INPUTS:
                    parser.parse(data)
        except ValueError as error:
            outcomes.append(str(error))

    thread = threading.Thread(target=keep_parsing)
    thread.start()
    time.sleep(0.05)
    parser.close()
    thread.join(timeout=30)
    assert outcomes and "closed" in outcomes[0]


def test_a_parse_lets_other_threads_run():
    # Long enough to watch, and not recognised, so that the parse is nearly all native work.
    long_input = b"A" * (16 << 20)
    parser = Parser()

    def parse_long() -> None:
        try:
            parser.parse(long_input)
        except orvane_parser.NotRecognised:
            pass

    started = time.perf_counter()
    parse_long()
    duration = time.perf_counter() - started
    inside = threading.Event()
    done = threading.Event()

    def watched() -> None:
        inside.set()
        parse_long()
        done.set()

    thread = threading.Thread(target=watched)
    thread.start()
    inside.wait()
    ticks = [time.perf_counter()]
    while not done.is_set():
        ticks.append(time.perf_counter())
    thread.join()
    longest_gap = max(later - earlier for earlier, later in zip(ticks, ticks[1:]))
    # Holding the GIL, the parse would stop this loop for its whole duration.
    assert longest_gap < duration / 2, (longest_gap, duration)
