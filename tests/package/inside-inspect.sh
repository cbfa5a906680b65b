# In a root without the package: lintian and the validators of what desktops read.
set -eu
apt-get install -y -q --no-install-recommends lintian appstream desktop-file-utils man-db >/dev/null
lintian --fail-on error,warning --display-info --pedantic --allow-root /root/tilora.deb
dpkg-deb --fsys-tarfile /root/tilora.deb | tar -C /tmp -xf -
# Newer ones miss the project's pages, of which there are none until whoever builds the package names some.
said=$(appstreamcli validate --no-net --explain /tmp/usr/share/metainfo/org.tilora.Tilora.metainfo.xml 2>&1) || true
echo "$said"
echo "$said" | grep -q '^. Validation'
if echo "$said" | grep '^[EW]:' | grep -v ' url-homepage-missing$'; then exit 1; fi
desktop-file-validate /tmp/usr/share/applications/org.tilora.Tilora.desktop
warnings=$(man --warnings --local-file /tmp/usr/share/man/man1/tilora.1.gz 2>&1 >/tmp/page)
[ -z "$warnings" ] || { echo "$warnings"; exit 1; }
grep -q 'Alt+Shift+Space' /tmp/page
dpkg-deb --info /root/tilora.deb
