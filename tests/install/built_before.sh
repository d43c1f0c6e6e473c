# A compiler launcher: an object that another tree has by the same command is taken, as built_before.py has laid it ready;
# whatever else is compiled is named in compiled.txt of the tree, in which this runs.
#
#     sh built_before.sh COMMAND...
before='' target='' dependencies=''
for word; do
    case $before in
    -o) target=$word ;;
    -MF) dependencies=$word ;;
    esac
    before=$word
done
if [ -n "$target" ] && [ -e "built before/$target" ]; then
    [ -z "$dependencies" ] || : >"$dependencies"
    exec mv -f "built before/$target" "$target"
fi
[ -z "$target" ] || echo "$target" >>compiled.txt
exec "$@"
