from hypothesis import settings

# The same examples in every run, and nothing written beside the tests.
settings.register_profile("corvane", database=None, derandomize=True, deadline=None)
settings.load_profile("corvane")
