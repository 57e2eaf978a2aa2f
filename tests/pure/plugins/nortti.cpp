// The whole plug-in, compiled without run-time types.
#include "whole.cpp"
