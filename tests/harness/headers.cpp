// Nothing but the headers that every test includes, compiled once for all.
