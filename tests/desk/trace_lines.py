"""The trace, as far as it is the same in every run."""
import re


def same_everywhere(trace):
    """A trace without what differs from run to run: process, thread and object numbers."""
    trace = re.sub(r"\b(env|cls|clazz)( ?= ?)(0x[0-9a-f]+|\(nil\))", r"\1\2ADDRESS", trace)
    trace = re.sub(r"\b(pid|tid|threadid)( ?= ?)[0-9a-f]+\b", r"\1\2NUMBER", trace)
    return re.sub(r"\( *\d+\):<", "(PID):<", trace)
