<%@ Page Title="Orders" Language="C#" AutoEventWireup="true" CodeBehind="Default.aspx.cs"
    Inherits="Shop.OrdersPage" EnableEventValidation="true" %>
<%@ Register Src="~/Header.ascx" TagPrefix="shop" TagName="Header" %>
<%@ Import Namespace="System.Globalization" %>
<%-- Half-typed on purpose, top to bottom: an attribute of GridView, a field, a value of
     TextMode, a validator, a control's name, an open panel. --%>
<!DOCTYPE html>
<html lang="en">
<head runat="server">
    <meta charset="utf-8">
    <title>Orders</title>
    <link rel="stylesheet" href="site.css">
    <script>
        function confirmDelete(id) {
            return confirm("Delete order " + id + "?") && id > 0;
        }
    </script>
</head>
<body>
<form id="main" runat="server">
    <asp:ScriptManager ID="Scripts" runat="server" EnablePartialRendering="true">
        <Scripts>
            <asp:ScriptReference Path="~/scripts/orders.js" />
        </Scripts>
    </asp:ScriptManager>
    <shop:Header ID="Header" runat="server" Caption="Orders" />

    <div class="filter">
        <asp:Label ID="CustomerLabel" runat="server" AssociatedControlID="Customer" Text="Customer" />
        <asp:DropDownList ID="Customer" runat="server" AutoPostBack="true"
            DataSourceID="Customers" DataTextField="Name" DataValueField="Id"
            AppendDataBoundItems="true">
            <asp:ListItem Text="All" Value="" Selected="True" />
        </asp:DropDownList>
        <asp:CheckBox ID="OnlyOpen" runat="server" Text="Open orders only" Checked="true" />
        <asp:Button ID="Search" runat="server" Text="Search" OnClick="Search_Click" CssClass="primary" />
    </div>

    <asp:UpdatePanel ID="OrdersPanel" runat="server" UpdateMode="Conditional">
        <ContentTemplate>
            <asp:GridView ID="Orders" runat="server" DataSourceID="OrdersSource"
                DataKeyNames="Id" AutoGenerateColumns="false" AllowPaging="true" PageSize="20"
                AllowSorting="true" CssClass="grid" HeaderStyle-CssClass="head" GridLines="None"
                OnRowCommand="Orders_RowCommand" Emp>
                <Columns>
                    <asp:BoundField DataField="Number" HeaderText="No." SortExpression="Number" ReadOnly="true" />
                    <asp:BoundField DataField="Placed" HeaderText="Date" DataFormatString="{0:d}" />
                    <asp:HyperLinkField DataTextField="Customer" HeaderText="Customer"
                        DataNavigateUrlFields="CustomerId" DataNavigateUrlFormatString="~/Customer.aspx?id={0}" />
                    <asp:TemplateField HeaderText="State">
                        <ItemTemplate>
                            <span class="state <%# Eval("State") %>"><%# Eval("State") %></span>
                            <asp:LinkButton ID="Delete" runat="server" CommandName="Delete" Text="Delete"
                                OnClientClick='<%# "return confirmDelete(" + Eval("Id") + ")" %>' />
                        </ItemTemplate>
                        <EditItemTemplate>
                            <asp:RadioButtonList ID="State" runat="server" RepeatDirection="Horizontal"
                                SelectedValue='<%# Bind("State") %>'>
                                <asp:ListItem>open</asp:ListItem>
                                <asp:ListItem>sent</asp:ListItem>
                            </asp:RadioButtonList>
                        </EditItemTemplate>
                    </asp:TemplateField>
                    <asp:Com
                </Columns>
                <PagerStyle CssClass="pager" HorizontalAlign="Center" />
                <EmptyDataTemplate>
                    <p>No orders &mdash; try another customer.</p>
                </EmptyDataTemplate>
            </asp:GridView>
        </ContentTemplate>
        <Triggers>
            <asp:AsyncPostBackTrigger ControlID="Search" EventName="Click" />
        </Triggers>
    </asp:UpdatePanel>

    <fieldset>
        <legend>New order</legend>
        <ul>
            <li>
                <asp:Label runat="server" AssociatedControlID="Amount" Text="Amount" />
                <asp:TextBox ID="Amount" runat="server" Columns="8" MaxLength="10" TextMode="" />
                <asp:RequiredFieldValidator ID="AmountNeeded" runat="server" ControlToValidate="Amount"
                    ErrorMessage="An amount is needed." Display="Dynamic" ForeColor="#b00020" />
                <asp:RangeValidator ID="AmountRange" runat="server" ControlToValidate="Amount"
                    MinimumValue="1" MaximumValue="9999" Type=
            </li>
            <li>
                <asp:Label runat="server" AssociatedControlID="Due" Text="Due" />
                <asp:Calendar ID="Due" runat="server" FirstDayOfWeek="Monday">
                    <TodayDayStyle Font-Bold="true" />
                </asp:Calendar>
            </li>
        </ul>
        <asp:ValidationSummary ID="Problems" runat="server" DisplayMode="BulletList" />
        <asp:But
    </fieldset>

    <asp:LoginView ID="Who" runat="server">
        <AnonymousTemplate><a href="Login.aspx">Sign in</a></AnonymousTemplate>
        <LoggedInTemplate>
            <asp:LoginName runat="server" FormatString="Signed in as {0}" />
            <asp:LoginStatus runat="server" LogoutAction="Redirect" LogoutPageUrl="~/" />
        </LoggedInTemplate>
    </asp:LoginView>

    <asp:SqlDataSource ID="Customers" runat="server" ConnectionString="<%$ ConnectionStrings:Shop %>"
        SelectCommand="SELECT Id, Name FROM Customer ORDER BY Name" />
    <asp:SqlDataSource ID="OrdersSource" runat="server" ConnectionString="<%$ ConnectionStrings:Shop %>"
        SelectCommand="ListOrders" SelectCommandType="StoredProcedure" CancelSelectOnNullParameter="false">
        <SelectParameters>
            <asp:ControlParameter Name="customer" ControlID="Customer" PropertyName="SelectedValue" Type="Int32" />
            <asp:ControlParameter Name="open" ControlID="OnlyOpen" PropertyName="Checked" Type="Boolean" />
        </SelectParameters>
    </asp:SqlDataSource>

    <p class="footer">
        <% if (Request.IsLocal) { %>
        Rendered <%= DateTime.Now.ToString("u", CultureInfo.InvariantCulture) %>
        <% } %>
    </p>
    <asp:Panel ID="Debug" runat="server" Visible="false" ScrollBars="Auto">
        <
</form>
</body>
</html>
