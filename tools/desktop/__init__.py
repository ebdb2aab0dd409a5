"""Private desktops: a display, a panel and a session bus of their own, for one run.

Nothing here touches the desktop, the home folder or the session of whoever starts it, and all
that was started ends with the run, however the run ends.
"""
