# In a bare root: after the package was installed and purged, with all that came with it, the files are those from before.
set -eu

# What a package manager writes down of its own work, the caches that it fills, and where Ubuntu puts the /lib of packages from before the
# merge of /usr, are not the package's.
files() {
  find / -xdev \( -path /proc -o -path /dev -o -path /tmp -o -path /var/cache -o -path /var/log -o -path /var/lib/apt -o -path /var/lib/dpkg \
    -o -path '/*.usr-is-merged' \) -prune -o -print | sort
}

apt-get update -q
files >/tmp/before
apt-get install -y -q --no-install-recommends /root/tilora.deb >/dev/null
files >/tmp/installed
dpkg -L tilora
for program in /usr/bin/tilora /usr/libexec/tilora/tilora-consent /usr/libexec/tilora/tilora-fetch; do
  test -x "$program"
  lacking=$(ldd "$program" | grep 'not found' || true)
  [ -z "$lacking" ] || { echo "$program: $lacking"; exit 1; }
done
if cmp -s /tmp/before /tmp/installed; then echo "nothing was installed"; exit 1; fi
apt-get purge -y -q tilora >/dev/null
apt-get autoremove --purge -y -q >/dev/null
files >/tmp/after
if dpkg -s tilora >/dev/null 2>&1; then echo "tilora is known still"; exit 1; fi
find / -xdev -path /proc -prune -o \( -iname '*tilora*' ! -path /root/tilora.deb \) -print >/tmp/named
[ ! -s /tmp/named ] || { cat /tmp/named; exit 1; }
diff /tmp/before /tmp/after
