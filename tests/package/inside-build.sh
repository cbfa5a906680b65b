# In a root of the distribution: builds the package of the source archive in /root, and leaves it there. Usage: inside-build.sh ARCHIVE
set -eu
cd /root
apt-get update -q
apt-get install -y -q --no-install-recommends make g++ ca-certificates
touch ready
rm -rf ./*.deb source
mkdir source
tar -C source --strip-components=1 -xf "$1"
cd source
make package
mv build/package/*.deb /root/
