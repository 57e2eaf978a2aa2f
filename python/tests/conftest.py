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
    """Ctrl-C once this process has used so many seconds of the processor, however long that takes beside other work."""

    @contextlib.contextmanager
    def after(seconds):
        over, start = threading.Event(), time.process_time()

        def wait():
            while time.process_time() < start + seconds:
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
