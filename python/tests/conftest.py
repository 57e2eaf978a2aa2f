import contextlib
import os
import signal
import threading
import time

import pytest
from hypothesis import settings

# The same examples in every run, and nothing written beside the tests.
settings.register_profile("corvane", database=None, derandomize=True, deadline=None)
settings.load_profile("corvane")


@pytest.fixture
def interruption():
    """Ctrl-C once this process has used so many seconds of the processor, however long that takes beside other work, or
    once what is given says so."""

    @contextlib.contextmanager
    def after(when):
        over, start = threading.Event(), time.process_time()
        due = when if callable(when) else lambda: time.process_time() >= start + when

        def wait():
            while not due():
                if over.wait(0.01):
                    return
            os.kill(os.getpid(), signal.SIGINT)

        # A process that a shell started in the background ignores the signal.
        before = signal.signal(signal.SIGINT, signal.default_int_handler)
        waits = threading.Thread(target=wait)
        waits.start()
        try:
            yield
        finally:
            over.set()
            waits.join()
            signal.signal(signal.SIGINT, before)

    return after
