# In a bare root: what the package depends on is enough to run it; it comes and goes beside a window manager, and nothing of it is left.
set -eu
apt-get install -y -q --no-install-recommends /root/tilora.deb >/dev/null
# After the package, so that none of it stands in for something that the package should have brought.
apt-get install -y -q --no-install-recommends xvfb openbox xterm xdotool x11-utils dbus-daemon >/dev/null
useradd --create-home --shell /bin/sh guest
cp /root/inside-session.sh /home/guest/session.sh
su - guest -c 'dbus-run-session -- sh session.sh'
apt-get purge -y -q tilora >/dev/null
find / -xdev \( -path /proc -o -path /home/guest \) -prune -o \( -iname '*tilora*' ! -path /root/tilora.deb \) -print >/tmp/named
[ ! -s /tmp/named ] || { cat /tmp/named; exit 1; }
